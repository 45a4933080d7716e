#include "startup/open_connection.h"

#include "common/text.h"
#include "database/embedded/open.h"
#include "database/sqlserver/open.h"

namespace startup {

namespace {

// The value of a "name=value;" part, trimmed; empty when the string has none. The last one counts, as with
// OLE DB.
std::string part_of(std::string_view connection_string, std::string_view name) {
    std::string found;
    while (!connection_string.empty()) {
        const auto end = connection_string.find(';');
        const std::string_view part = connection_string.substr(0, end);
        const auto equals = part.find('=');
        if (equals != part.npos && common::equal_ignoring_case(common::trim(part.substr(0, equals)), name)) {
            found = common::trim(part.substr(equals + 1));
        }
        connection_string = end == connection_string.npos ? "" : connection_string.substr(end + 1);
    }
    return found;
}

}  // namespace

std::unique_ptr<database::Connection> open_connection(const std::string& connection_string,
                                                      const std::filesystem::path& folder) {
    if (!common::equal_ignoring_case(part_of(connection_string, "Data Source"), "embedded")) {
        return database::open_sqlserver(connection_string);
    }
    const std::string file = part_of(connection_string, "Initial Catalog");
    if (file.empty())
        throw database::Error("08001", "The connection names no shop file.", "",
                              database::Error::Kind::file_missing);
    return database::open_embedded(folder / file);
}

}  // namespace startup
