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

// The path with ".backup", or with a number before that when two restores come in one second.
fs::path free_name(const fs::path& path) {
    fs::path name = path.string() + ".backup";
    for (int number = 2; fs::exists(name); ++number)
        name = path.string() + "-" + std::to_string(number) + ".backup";
    return name;
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
                        "The file to write, or the folder for shop-DATE-TIME.backup; without it that file in "
                        "the working directory");
    command->callback([file, &tool] {
        const std::string named_by_clock = "shop-" + stamp(tool) + ".backup";
        fs::path target = tool.folder / (file->empty() ? named_by_clock : *file);
        if (fs::is_directory(target)) target /= named_by_clock;
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
        const fs::path safety = free_name(tool.folder / ("before-restore-" + stamp(tool)));
        const BackupOutcome outcome = put_back(tool.folder / *file, shop, safety, tool);
        print(outcome, "restored", *file, tool);
        if (fs::exists(safety)) tool.out << "what was there before is in " << safety.string() << '\n';
    });
}

}  // namespace admin
