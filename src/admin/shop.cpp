#include "admin/shop.h"

#include <random>

#include "admin/shop_files.h"
#include "startup/open_connection.h"
#include "startup/shop_files.h"

namespace admin {

namespace fs = std::filesystem;

bool is_embedded(const Place& place) {
    return startup::data_source_of(place).is_embedded();
}

bool has_connection_file(const fs::path& folder) {
    return startup::has_connection_file(folder);
}

Place read_place(const fs::path& folder) {
    if (!has_connection_file(folder)) {
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

fs::path shop_file(const fs::path& folder, const Place& place) {
    return startup::shop_file(place, folder);
}

std::unique_ptr<database::Connection> open_place(const fs::path& folder, const Place& place) {
    try {
        auto connection = startup::open_shop(place, home_of(folder), folder);
        connection->execute("set dateformat ymd");
        return connection;
    } catch (const startup::StartUpError& error) {
        throw Refused(error.what());
    }
}

std::unique_ptr<database::Connection> open_shop(const Tool& tool) {
    return open_place(tool.folder, read_place(tool.folder));
}

}  // namespace admin
