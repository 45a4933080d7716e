// tallvex-admin backup and restore.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "admin/shop.h"
#include "admin/tool.h"
#include "backup/automatic.h"
#include "backup/backup.h"
#include "database/till_settings.h"
#include "startup/connection_file.h"

namespace admin {

namespace fs = std::filesystem;

namespace {

// Shows on the terminal how far a copy has got.
backup::Progress shown_on(Tool& tool) {
    const auto bar = std::make_shared<std::unique_ptr<Progress>>();
    const auto of = std::make_shared<std::string>();
    return [&tool, bar, of](const std::string& label, std::size_t done_pages, std::size_t pages) {
        if (*bar == nullptr || *of != label) {
            bar->reset();
            *bar = std::make_unique<Progress>(tool, label, pages);
            *of = label;
        }
        (*bar)->reach(done_pages);
    };
}

fs::path embedded_file(const Tool& tool) {
    const Place place = read_place(tool.shop);
    if (!is_embedded(place)) {
        throw Refused("the shop is on the server " + place.server +
                      "; back it up with the server's own tools");
    }
    return startup::shop_file(place, tool.shop);
}

// The name, with a number before its ending if two restores happen in one second.
fs::path free_name(const fs::path& path) {
    fs::path name = path;
    for (int number = 2; fs::exists(name); ++number)
        name.replace_filename(path.stem().string() + "-" + std::to_string(number) +
                              path.extension().string());
    return name;
}

void print(const backup::Copy& outcome, std::string_view what, const fs::path& file, Tool& tool) {
    tool.out << what << ' ' << file.string() << ": " << outcome.bytes << " bytes, " << outcome.invoices
             << " invoices, checked\n";
}

void back_up_to_folders(Tool& tool) {
    const fs::path shop = embedded_file(tool);
    const auto connection = open_shop(tool);
    const auto outcomes = backup::back_up_to_folders(*connection, shop, tool.clock.now(), shown_on(tool));
    if (outcomes.empty()) {
        throw Refused("the shop names no folder for its backups: tallvex-admin settings " +
                      std::string(database::setting::backup_to) + " FOLDER");
    }
    std::string failures;
    for (const backup::Outcome& outcome : outcomes) {
        if (outcome.failure.empty())
            print(outcome.copy, "backup", outcome.file, tool);
        else
            failures += (failures.empty() ? "" : "; ") + outcome.failure;
    }
    if (!failures.empty()) throw Refused(failures);
}

}  // namespace

void add_backup(CLI::App& program, Tool& tool) {
    const auto file = std::make_shared<std::string>();
    const auto automatic = std::make_shared<bool>(false);
    CLI::App* command = program.add_subcommand(
        "backup", tool.help("Copies the embedded shop to a file, while tills work, and checks the copy",
                            "ينسخ المحل المحفوظ في ملف والأجهزة تعمل، ويراجع النسخة"));
    auto* named = command->add_option(
        "file", *file,
        tool.help("The file to write, or the folder for shop-DATE-TIME.backup; without it that file in "
                  "the working directory",
                  "الملف الذي تكتب فيه النسخة، أو المجلد الذي تحفظ فيه باسم shop-DATE-TIME.backup، وإن لم "
                  "تكتبه ففي المجلد الحالي"));
    command
        ->add_flag(
            "--automatic", *automatic,
            tool.help("Copy into the folders of the setting backup_to and thin out the copies there, as the "
                      "till does at each shift close and when it is left",
                      "ينسخ في مجلدات الإعداد backup_to ويحذف الزائد من النسخ القديمة، كما يفعل الكاشير عند "
                      "إغلاق الوردية وعند الخروج"))
        ->excludes(named);
    command->callback([file, automatic, &tool] {
        if (*automatic) return back_up_to_folders(tool);
        const std::string named_by_clock = backup::name_at("shop-", tool.clock.now());
        fs::path target = tool.folder / (file->empty() ? named_by_clock : *file);
        if (fs::is_directory(target)) target /= named_by_clock;
        print(backup::back_up(embedded_file(tool), target, shown_on(tool)), "backup", target, tool);
    });
}

void add_restore(CLI::App& program, Tool& tool) {
    const auto file = std::make_shared<std::string>();
    CLI::App* command = program.add_subcommand(
        "restore", tool.help("Puts a backup in the embedded shop's place; what was there is backed up first",
                             "يضع نسخة احتياطية مكان المحل المحفوظ في ملف، بعد نسخ الموجود أولا"));
    command->add_option("file", *file, tool.help("The backup", "النسخة الاحتياطية"))->required();
    command->callback([file, &tool] {
        const fs::path shop = embedded_file(tool);
        const fs::path safety = free_name(tool.folder / backup::name_at("before-restore-", tool.clock.now()));
        const backup::Copy outcome = backup::put_back(tool.folder / *file, shop, safety, shown_on(tool));
        print(outcome, "restored", *file, tool);
        for (const std::string& strange : outcome.strange)
            tool.err << "note: " << strange << '\n';
        if (fs::exists(safety)) tool.out << "what was there before is in " << safety.string() << '\n';
    });
}

}  // namespace admin
