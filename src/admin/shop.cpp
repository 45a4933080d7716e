#include "admin/shop.h"

#include <cstdlib>

#include "startup/open_connection.h"
#include "startup/shop_files.h"
#include "startup/workstation.h"

namespace admin {

namespace fs = std::filesystem;

namespace {

// Runs work on the shop's files and turns its failure into a refusal.
template <typename Work>
auto or_refuse(Work work) {
    try {
        return work();
    } catch (const startup::StartUpError& error) {
        throw Refused(error.what());
    }
}

}  // namespace

bool is_embedded(const Place& place) {
    return startup::data_source_of(place).is_embedded();
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

fs::path write_place(const fs::path& folder, const Place& place) {
    // In a connection string ";" begins the next part.
    for (const std::string& text : {place.server, place.database, place.address}) {
        if (text.find(';') != std::string::npos)
            throw Refused("a name with \";\" cannot stand in the connection file: " + text);
    }
    try {
        return startup::write_connection_file(folder, place);
    } catch (const startup::StartUpError& error) {
        throw Refused(std::string("the connection file cannot be written: ") + error.what());
    }
}

std::unique_ptr<database::Connection> open_place(const fs::path& folder, const Place& place) {
    auto connection = or_refuse([&] { return startup::open_shop(place, home_of(folder), folder); });
    connection->execute("set dateformat ymd");
    return connection;
}

std::unique_ptr<database::Connection> open_shop(const Tool& tool) {
    return open_place(tool.folder, read_place(tool.folder));
}

std::string shop_version() {
    return TALLVEX_VERSION;
}

fs::path home_of(const fs::path& folder) {
    const char* home = std::getenv("TALLVEX_HOME");
    const bool named = home != nullptr && *home != '\0';
    if (!named && startup::find_file(folder, startup::version_file_name)) return folder;
    return startup::program_folder();
}

std::vector<fs::path> write_shop_files(const fs::path& folder) {
    return or_refuse([&] {
        std::vector<fs::path> written;
        if (!startup::find_file(folder, startup::version_file_name)) {
            startup::write_version_file(folder, shop_version());
            written.push_back(folder / startup::version_file_name);
        }
        if (!startup::find_file(folder, startup::credit_file_name)) {
            startup::write_credit_file(folder, {});
            written.push_back(folder / startup::credit_file_name);
        }
        return written;
    });
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
    return ask_password(tool, "the login sa", "no server takes an empty one");
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

}  // namespace admin
