#include "admin/shop.h"

#include <CLI/CLI.hpp>
#include <cstdlib>

#include "database/sqlserver/encryption.h"
#include "startup/shop_files.h"

namespace admin {

namespace fs = std::filesystem;

std::string encryption_words(const Place& place) {
    using namespace database::encryption;
    if (place.encryption == everything)
        return "require: everything is encrypted, else there is no connection";
    if (place.encryption == off)
        return "off: the password of sa may go to the server in clear, where everybody on the network can "
               "read it";
    return "login: the password of sa is encrypted, else it is not sent; what follows is encrypted if the "
           "server "
           "says so";
}

Place read_place(const fs::path& folder) {
    if (!startup::has_connection_file(folder)) {
        throw Refused("no connection file (" + std::string(startup::connection_file_name) + ") in " +
                      folder.string() +
                      "; go to a shop's folder, or make one: tallvex-admin new-shop FOLDER");
    }
    try {
        return startup::read_connection_file(folder);
    } catch (const startup::StartUpError& error) {
        throw Refused(std::string("the connection file cannot be used: ") + error.what() +
                      "; write it anew: tallvex-admin connect --server NAME --database NAME");
    }
}

std::unique_ptr<database::Connection> open_shop(const Tool& tool) {
    return open_place(tool.shop, read_place(tool.shop));
}

std::string read_version(const fs::path& folder) {
    return or_refuse([&] { return startup::read_version_file(home_of(folder)); });
}

fs::path log_file(const fs::path& folder) {
    const fs::path home = home_of(folder);
    const auto logs = startup::find_file(home, startup::logs_folder_name);
    const fs::path where = logs.value_or(home / startup::logs_folder_name);
    return startup::find_file(where, startup::log_file_name).value_or(where / startup::log_file_name);
}

std::string ask_login_password(Tool& tool) {
    return ask_secret(tool, "password of the login sa", "no server takes an empty one");
}

std::string keep_login_password(const fs::path& folder, const std::string& password) {
    const fs::path home = home_of(folder);
    or_refuse([&] { startup::write_sa_password(home, password); });
    return (home / startup::password_file_name).string();
}

bool has_login_password(const fs::path& folder) {
    return std::getenv("TALLVEX_SA_PASSWORD") != nullptr ||
           startup::find_file(home_of(folder), startup::password_file_name).has_value();
}

std::function<fs::path()> keeping_password(const fs::path& folder, Tool& tool) {
    return [folder, &tool]() -> fs::path {
        if (has_login_password(folder)) return {};
        return keep_login_password(folder, ask_login_password(tool));
    };
}

void say_where(const fs::path& folder, Tool& tool) {
    tool.out << "The shop is in " << folder.lexically_normal().string() << ".\n";
}

CLI::Option* add_encryption_option(CLI::App& command, Place& place, const Tool& tool) {
    using namespace database::encryption;
    const auto set = [&place](const std::string& word) { place.encryption = word == log_in ? "" : word; };
    return command
        .add_option_function<std::string>(
            "--encryption", set,
            tool.help("login: the password of sa goes to a server encrypted or not at all "
                      "(the default); require: everything is encrypted; off: the password "
                      "may go unencrypted",
                      "المعتاد login: ترسل كلمة سر sa مشفرة أو لا ترسل، ومع require يشفر كل شيء، ومع off قد "
                      "ترسل كلمة السر بلا تشفير"))
        ->check(CLI::IsMember({std::string(log_in), std::string(everything), std::string(off)}));
}

void add_place_options(CLI::App& command, Place& place, const Tool& tool, const std::string& with_server) {
    command.add_option("--server", place.server, with_server);
    command
        .add_option("--database", place.database,
                    tool.help("An empty database of the server, or the file's name",
                              "قاعدة بيانات خالية على الخادم، أو اسم الملف"))
        ->capture_default_str();
    command
        .add_option("--address", place.address,
                    tool.help("Network address of the server", "عنوان الخادم على الشبكة"))
        ->capture_default_str();
    add_encryption_option(command, place, tool);
}

}  // namespace admin
