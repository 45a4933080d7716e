// tallvex-admin copy-shop: the shop of the working directory into a new one, on either engine.
#include <CLI/CLI.hpp>
#include <memory>

#include "admin/commands.h"
#include "admin/copy_shop.h"
#include "admin/place_options.h"
#include "admin/shop_maker.h"

namespace admin {

namespace {

struct Options {
    std::string folder;
    Place place = new_place;
};

void run(const Options& options, Tool& tool) {
    const auto source = open_shop(tool);
    CopyOutcome outcome;
    make_place(tool.folder / options.folder, options.place, tool, [&](database::Connection& target) {
        outcome = copy_shop(*source, target, tool);
        if (outcome.differences.empty()) return;
        std::string text = "the copy is not whole; close the tills and copy again";
        for (const std::string& difference : outcome.differences)
            text += "\n  " + difference;
        throw Refused(text);
    });
    tool.out << outcome.tables << " tables with " << outcome.rows << " rows copied; every count agrees\n";
}

}  // namespace

void add_copy_shop(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "copy-shop", "Copies the shop of the working directory into a new one, in a file or on a server");
    command->add_option("folder", options->folder, "The folder of the new shop's files; made when missing")
        ->required();
    add_place_options(*command, options->place, "Copy into a database of this server instead of a file");
    command->callback([options, &tool] { run(*options, tool); });
}

}  // namespace admin
