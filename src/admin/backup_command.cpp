// tallvex-admin backup and restore: copies of an embedded shop's file.
#include <CLI/CLI.hpp>
#include <memory>

#include "admin/backup.h"
#include "admin/commands.h"
#include "admin/shop.h"

namespace admin {

namespace {

namespace fs = std::filesystem;

fs::path embedded_file(const Tool& tool) {
    const Place place = read_place(tool.folder);
    if (!is_embedded(place)) {
        throw Refused("the shop is on the server " + place.server +
                      "; back it up with the server's own tools");
    }
    return shop_file(tool.folder, place);
}

// "20261121-104200": fit for a file's name, in the order of time.
std::string stamp(const Tool& tool) {
    std::string text = common::moment_text(tool.clock.now());
    std::erase(text, '/');
    std::erase(text, ':');
    std::replace(text.begin(), text.end(), ' ', '-');
    return text;
}

void print(const BackupOutcome& outcome, std::string_view what, const fs::path& file, Tool& tool) {
    tool.out << what << ' ' << file.string() << ": " << outcome.bytes << " bytes, " << outcome.invoices
             << " invoices, checked\n";
}

}  // namespace

void add_backup(CLI::App& program, Tool& tool) {
    const auto file = std::make_shared<std::string>();
    CLI::App* command = program.add_subcommand(
        "backup", "Copies the embedded shop to a file, while tills work, and checks the copy");
    command->add_option("file", *file,
                        "The file to write; without it shop-DATE-TIME.backup in the working directory");
    command->callback([file, &tool] {
        const fs::path target = tool.folder / (file->empty() ? "shop-" + stamp(tool) + ".backup" : *file);
        print(back_up(embedded_file(tool), target, tool), "backup", target, tool);
    });
}

void add_restore(CLI::App& program, Tool& tool) {
    const auto file = std::make_shared<std::string>();
    CLI::App* command = program.add_subcommand(
        "restore", "Puts a backup in the embedded shop's place; what was there is backed up first");
    command->add_option("file", *file, "The backup")->required();
    command->callback([file, &tool] {
        const fs::path shop = embedded_file(tool);
        const fs::path safety = tool.folder / ("before-restore-" + stamp(tool) + ".backup");
        const BackupOutcome outcome = put_back(tool.folder / *file, shop, safety, tool);
        print(outcome, "restored", *file, tool);
        if (fs::exists(safety)) tool.out << "what was there before is in " << safety.string() << '\n';
    });
}

}  // namespace admin
