#include "admin/shop.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <system_error>
#include <vector>

#include "common/text.h"
#include "database/embedded/open.h"
#include "database/schema/schema.h"
#include "database/sqlserver/encryption.h"
#include "startup/connection_file.h"
#include "startup/shop_files.h"
#include "startup/workstation.h"

namespace admin {

namespace fs = std::filesystem;
using database::Connection;
using Fill = std::function<void(Connection&)>;

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
    return open_place(tool.shop, read_place(tool.shop));
}

std::string shop_version() {
    return TALLVEX_VERSION;
}

fs::path home_of(const fs::path& folder) {
    if (!startup::named_home() && startup::find_file(folder, startup::version_file_name)) return folder;
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

namespace {

// Removes the files created so far unless they are kept.
class MadeFiles {
  public:
    MadeFiles() = default;
    MadeFiles(const MadeFiles&) = delete;
    MadeFiles& operator=(const MadeFiles&) = delete;
    ~MadeFiles() {
        std::error_code ignored;
        for (const fs::path& file : files_)
            fs::remove(file, ignored);
    }
    void add(const fs::path& file) { files_.push_back(file); }
    void keep() { files_.clear(); }

  private:
    std::vector<fs::path> files_;
};

// The name of a shop's file until it is complete.
fs::path unfinished(const fs::path& folder, const Place& place) {
    return startup::shop_file(place, folder).string() + ".making";
}

void write_files(const fs::path& folder, const Place& place, MadeFiles& made) {
    for (const fs::path& file : write_shop_files(folder))
        made.add(file);
    made.add(write_place(folder, place));
}

// The database gets its name last. If the program is killed before, the command can be run again.
void make_embedded(const fs::path& folder, const Place& place, const Fill& fill, MadeFiles& made) {
    const fs::path file = startup::shop_file(place, folder);
    const fs::path making = unfinished(folder, place);
    for (const char* ending : {"", "-wal", "-shm"}) {
        const fs::path part = making.string() + ending;
        fs::remove(part);  // left by an attempt that was killed
        made.add(part);
    }
    {
        const auto connection = database::open_embedded(making, true);
        fill(*connection);
        connection->make_durable();
    }
    write_files(folder, place, made);
    fs::rename(making, file);
    made.add(file);
}

bool has_tables(Connection& connection) {
    try {
        connection.scalar("select count(*) from basic");
        return true;
    } catch (const database::Error& error) {
        if (error.is_connection_lost()) throw;
        return false;
    }
}

// The upgrade list ignores its failures, so a login without the right to alter tables goes unnoticed.
void refuse_incomplete(Connection& connection) {
    std::string names;
    for (const database::Missing& missing : database::missing_parts(connection))
        names += "\n  " + missing.name();
    if (!names.empty())
        throw Refused(
            "the server did not create all of it; use a login that may create and alter tables. "
            "These tables and columns are missing:" +
            names + "\n");
}

void make_on_server(const fs::path& folder, const Place& place, const Fill& fill) {
    const auto connection = open_place(folder, place);
    const std::string where = "the database " + place.database + " on " + place.server;
    if (has_tables(*connection)) {
        throw Refused(
            where +
            " holds a shop already, or a part of one that was cut off; connect to it (tallvex-admin "
            "connect), or drop the database, create it empty and try again");
    }
    try {
        fill(*connection);
        connection->make_durable();
        refuse_incomplete(*connection);
    } catch (const std::exception& error) {
        throw Refused(std::string("the shop was not finished: ") + error.what() + "; drop " + where +
                      ", create it empty and try again");
    }
}

}  // namespace

void make_place(const fs::path& folder, const Place& place, Tool& tool, const Fill& fill) {
    std::error_code failed;
    fs::create_directories(folder, failed);
    if (!fs::is_directory(folder)) {
        throw Refused("the folder " + folder.string() + " cannot be made" +
                      (failed ? ": " + failed.message() : ""));
    }
    const bool was_cut_off = is_embedded(place) && fs::exists(unfinished(folder, place));
    if (startup::has_connection_file(folder) && !was_cut_off)
        throw Refused("the folder " + folder.string() + " belongs to a shop already");
    if (is_embedded(place) && fs::exists(startup::shop_file(place, folder))) {
        throw Refused("there is a shop already: " + startup::shop_file(place, folder).string());
    }
    MadeFiles made;
    if (is_embedded(place)) {
        make_embedded(folder, place, fill, made);
    } else {
        fs::remove(write_place(folder, place));  // refuses bad names before anything is created
        for (const fs::path& file : write_shop_files(folder))
            made.add(file);
        if (!has_login_password(folder)) made.add(keep_login_password(folder, ask_login_password(tool)));
        make_on_server(folder, place, fill);
        made.add(write_place(folder, place));  // last, so that no till starts on an incomplete shop
    }
    made.keep();
    tool.out << "The shop is in " << folder.lexically_normal().string() << ".\n";
}

void require_plain_name(std::string_view name) {
    if (common::printable(name) != name)
        throw Refused("a name must not have control characters or marks of direction: " +
                      common::printable(name));
}

CLI::Option* add_encryption_option(CLI::App& command, Place& place) {
    using namespace database::encryption;
    const auto set = [&place](const std::string& word) { place.encryption = word == log_in ? "" : word; };
    return command
        .add_option_function<std::string>(
            "--encryption", set,
            "login: the password of sa goes to a server encrypted or not at all "
            "(the default); require: everything is encrypted; off: the password "
            "may go unencrypted")
        ->check(CLI::IsMember({std::string(log_in), std::string(everything), std::string(off)}));
}

void add_place_options(CLI::App& command, Place& place, const std::string& with_server) {
    command.add_option("--server", place.server, with_server);
    command.add_option("--database", place.database, "An empty database of the server, or the file's name")
        ->capture_default_str();
    command.add_option("--address", place.address, "Network address of the server")->capture_default_str();
    add_encryption_option(command, place);
}

}  // namespace admin
