#include "backup/copy_shop.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "admin/shop.h"
#include "admin/tool.h"

namespace admin {

namespace {

// Shows how far the copy has come.
backup::CopiedShop copy_shop(database::Connection& source, database::Connection& target, Tool& tool) {
    std::optional<Progress> progress;
    try {
        return backup::copy_shop(source, target, [&](std::int64_t done, std::int64_t total) {
            if (!progress) progress.emplace(tool, "rows", static_cast<std::size_t>(total));
            progress->reach(static_cast<std::size_t>(done));
        });
    } catch (const backup::CopyFailed& error) {
        throw Refused(error.what());
    }
}

struct CopyOptions {
    std::string folder;
    Place place = new_place;
};

void run(const CopyOptions& options, Tool& tool) {
    const auto source = open_shop(tool);
    backup::CopiedShop outcome;
    const std::filesystem::path folder = tool.folder / options.folder;
    const auto fill = [&](database::Connection& target) {
        outcome = copy_shop(*source, target, tool);
        if (outcome.differences.empty()) return;
        std::string text = "the copy is not complete; close the tills and copy again";
        for (const std::string& difference : outcome.differences)
            text += "\n  " + difference;
        throw Refused(text);
    };
    shop::make_place(folder, options.place, fill, keeping_password(folder, tool));
    say_where(folder, tool);
    tool.out << outcome.tables << " tables with " << outcome.rows << " rows copied; every count agrees\n";
}

}  // namespace

void add_copy_shop(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<CopyOptions>();
    CLI::App* command = program.add_subcommand(
        "copy-shop",
        tool.help("Copies the shop of the working directory into a new one, in a file or on a server",
                  "ينسخ محل المجلد الحالي إلى محل جديد، في ملف أو على خادم"));
    command
        ->add_option("folder", options->folder,
                     tool.help("The folder of the new shop's files; created if missing",
                               "مجلد ملفات المحل الجديد، وينشأ إن لم يوجد"))
        ->required();
    add_place_options(*command, options->place, tool,
                      tool.help("Copy into a database of this server instead of a file",
                                "النسخ إلى قاعدة بيانات على هذا الخادم بدلا من ملف"));
    command->callback([options, &tool] { run(*options, tool); });
}

}  // namespace admin
