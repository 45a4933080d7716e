#include <CLI/CLI.hpp>
#include <memory>

#include "admin/shop.h"
#include "admin/tool.h"
#include "shop/new_shop.h"

namespace admin {

namespace {

void make_shop(const shop::NewShop& wanted, Tool& tool) {
    const auto users = shop::make_shop(wanted, tool.clock.now(), keeping_password(wanted.folder, tool));
    say_where(wanted.folder, tool);
    for (const shop::Person& user : users) {
        tool.out << "User: " << user.name;
        if (wanted.password.empty()) tool.out << ", password: " << user.password;
        tool.out << '\n';
    }
}

constexpr std::size_t longest_text = 100;  // basic.aname, users.name, users.pass

}  // namespace

void add_new_shop(CLI::App& program, Tool& tool) {
    const auto wanted = std::make_shared<shop::NewShop>();
    const auto folder = std::make_shared<std::string>();
    CLI::App* command = program.add_subcommand("new-shop", "Makes a shop in a folder: database and files");
    command->add_option("folder", *folder, "The folder; created if missing")->required();
    auto* demo = command->add_flag("--demo", wanted->demo, "Fill it with the demo grocery and its users");
    add_place_options(*command, wanted->place, "Make the database on this server instead of in a file");
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
    command->add_option("--drawer", wanted->drawer_port, "Port of the cash drawer")
        ->capture_default_str()
        ->check(fits);
    command->add_option("--user", wanted->administrator, "Name of the administrator")
        ->check(fits)
        ->excludes(demo);
    const auto ask = std::make_shared<bool>(false);
    command
        ->add_flag("--ask-password", *ask,
                   "Ask for the administrator's password, or read it from the standard input; without it a "
                   "random one is made and printed")
        ->excludes(demo);
    command->callback([wanted, folder, ask, &tool] {
        if (*ask)
            wanted->password =
                ask_password(tool, "the administrator", "leave --ask-password out for a random one");
        wanted->folder = tool.folder / *folder;
        make_shop(*wanted, tool);
    });
}

}  // namespace admin
