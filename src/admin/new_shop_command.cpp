// tallvex-admin new-shop: a new shop, embedded or on a server, bare or with the demo rows.
#include <CLI/CLI.hpp>
#include <memory>

#include "admin/commands.h"
#include "admin/new_shop.h"

namespace admin {

namespace {

constexpr std::size_t longest_text = 100;  // basic.aname, users.name, users.pass

}  // namespace

void add_new_shop(CLI::App& program, Tool& tool) {
    const auto wanted = std::make_shared<NewShop>();
    const auto folder = std::make_shared<std::string>();
    wanted->place = {"embedded", "shop.db", "Not Found"};
    CLI::App* command = program.add_subcommand("new-shop", "Makes a shop in a folder: database and files");
    command->add_option("folder", *folder, "The folder; made when missing")->required();
    auto* demo = command->add_flag("--demo", wanted->demo, "Fill it with the demo grocery and its users");
    command->add_option("--server", wanted->place.server,
                        "Make the database on this server instead of in a file");
    command
        ->add_option("--database", wanted->place.database,
                     "An empty database of the server, or the file's name")
        ->capture_default_str();
    command->add_option("--address", wanted->place.address, "Network address of the server")
        ->capture_default_str();
    const auto fits = CLI::Validator(
        [](std::string& text) {
            return text.size() > longest_text ? std::string("longer than 100 bytes") : std::string();
        },
        "", "text length");
    command->add_option("--name", wanted->name, "The shop's name on receipts")->check(fits);
    command->add_option("--tel", wanted->telephone, "Its telephone on receipts")->check(fits);
    command
        ->add_option("--printer", wanted->printer_port,
                     "Receipt port: \"win\" for the system's printer, or a port")
        ->capture_default_str()
        ->check(fits);
    command->add_option("--user", wanted->administrator, "Name of the administrator")
        ->check(fits)
        ->excludes(demo);
    command
        ->add_option("--password", wanted->password, "The administrator's password; without it a random one")
        ->check(fits)
        ->excludes(demo);
    command->callback([wanted, folder, &tool] {
        wanted->folder = tool.folder / *folder;
        make_shop(*wanted, tool);
    });
}

}  // namespace admin
