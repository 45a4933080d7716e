#include "shop/place.h"

#include <system_error>

#include "database/embedded/open.h"
#include "database/schema/schema.h"
#include "shop/messages.h"
#include "startup/shop_files.h"

namespace shop {

namespace fs = std::filesystem;
using database::Connection;
using Fill = std::function<void(Connection&)>;

bool is_embedded(const Place& place) {
    return startup::data_source_of(place).is_embedded();
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
        throw Refused(std::string("the connection file cannot be written: ") + error.what(), error.reason());
    }
}

std::unique_ptr<database::Connection> open_place(const fs::path& folder, const Place& place) {
    auto connection = or_refuse([&] { return startup::open_shop(place, startup::home_of(folder), folder); });
    connection->execute("set dateformat ymd");
    return connection;
}

std::string shop_version() {
    return TALLVEX_VERSION;
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

namespace {

// Removes the files created so far unless they are kept.
class MadeFiles {
  public:
    MadeFiles() = default;
    MadeFiles(const MadeFiles&) = delete;
    MadeFiles& operator=(const MadeFiles&) = delete;
    ~MadeFiles() {
        std::error_code ignored;  // a folder that holds something else stays
        for (auto file = files_.rbegin(); file != files_.rend(); ++file)
            fs::remove(*file, ignored);
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

// The database gets its name last. If the program is killed before that, the command can be run again.
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

bool was_cut_off(const fs::path& folder, const Place& place) {
    return is_embedded(place) && fs::exists(unfinished(folder, place));
}

bool has_shop(const fs::path& folder) {
    if (!startup::has_connection_file(folder)) return false;
    try {
        return !was_cut_off(folder, startup::read_connection_file(folder));
    } catch (const startup::StartUpError&) {
        return true;  // start-up says what is wrong with the file
    }
}

void make_place(const fs::path& folder, const Place& place, const Fill& fill,
                const std::function<fs::path()>& keep_password) {
    MadeFiles made;
    std::error_code failed;
    if (fs::create_directories(folder, failed)) made.add(folder);
    if (!fs::is_directory(folder)) {
        throw Refused(
            "the folder " + folder.string() + " cannot be made" + (failed ? ": " + failed.message() : ""),
            std::string(message::folder_not_made) + folder.string());
    }
    if (startup::has_connection_file(folder) && !was_cut_off(folder, place))
        throw Refused("the folder " + folder.string() + " belongs to a shop already",
                      std::string(message::shop_there) + folder.string());
    if (is_embedded(place) && fs::exists(startup::shop_file(place, folder))) {
        const std::string file = startup::shop_file(place, folder).string();
        throw Refused("there is a shop already: " + file, std::string(message::shop_there) + file);
    }
    if (is_embedded(place)) {
        make_embedded(folder, place, fill, made);
    } else {
        fs::remove(write_place(folder, place));  // refuses bad names before anything is created
        for (const fs::path& file : write_shop_files(folder))
            made.add(file);
        if (const fs::path kept = keep_password ? keep_password() : fs::path(); !kept.empty()) made.add(kept);
        make_on_server(folder, place, fill);
        made.add(write_place(folder, place));  // last, so that no till starts on an incomplete shop
    }
    made.keep();
}

}  // namespace shop
