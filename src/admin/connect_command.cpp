// tallvex-admin connect: writes the connection file of the working directory, or reads it back in clear.
#include <CLI/CLI.hpp>
#include <memory>

#include "admin/commands.h"
#include "admin/shop.h"

namespace admin {

namespace {

struct Options {
    Place place;
    bool show = false;
};

void print(const Place& place, Tool& tool) {
    tool.out << "server:   " << place.server << "\ndatabase: " << place.database
             << "\naddress:  " << place.address << '\n';
    // The till drops a "C" at the end of the server's name, and another at the end of what it connects to.
    const std::string source = startup::data_source_of(place).data_source;
    const bool uses_address = place.address != startup::no_address;
    if (!uses_address && source != place.server) {
        tool.err
            << "note: the till will connect to \"" << source
            << "\", as it drops up to two letters C at the end; write two more when the name has its own\n";
    }
}

}  // namespace

void add_connect(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<Options>();
    CLI::App* command =
        program.add_subcommand("connect", "Writes the connection file of the working directory, or shows it");
    auto* show = command->add_flag("--show", options->show, "Print what the connection file says, in clear");
    command
        ->add_option("--server", options->place.server,
                     "Server machine, \"machine\\instance\", or \"embedded\" for a shop in a file")
        ->excludes(show);
    command->add_option("--database", options->place.database, "Database, or the file of an embedded shop")
        ->excludes(show);
    command
        ->add_option("--address", options->place.address,
                     "Network address of the server, used instead of its name; \"Not Found\" for none")
        ->capture_default_str()
        ->excludes(show);
    command->callback([options, &tool] {
        if (options->show) {
            print(read_place(tool.folder), tool);
            return;
        }
        if (options->place.server.empty() || options->place.database.empty()) {
            throw CLI::ValidationError("connect", "--server and --database are needed, or --show");
        }
        write_place(tool.folder, options->place);
        print(read_place(tool.folder), tool);
    });
}

}  // namespace admin
