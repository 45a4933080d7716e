#include "database/open.h"

#include "common/text.h"
#include "database/embedded_connection.h"
#include "database/sqlserver_connection.h"

namespace database {

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

std::unique_ptr<Connection> open_connection(const std::string& connection_string,
                                            const std::filesystem::path& folder) {
    if (!common::equal_ignoring_case(part_of(connection_string, "Data Source"), "embedded")) {
        return open_sqlserver(connection_string);
    }
    const std::string file = part_of(connection_string, "Initial Catalog");
    if (file.empty()) throw Error("08001", "The connection names no shop file.", "");
    return open_embedded(folder / file);
}

}  // namespace database
