// The version that is stamped in a shop, basic.cr_v: every till has to be of this version.
#pragma once

#include <string>
#include <string_view>

#include "database/connection.h"

namespace startup {

// The stamp of the settings row; nothing if no till of a version that stamps has started yet. Throws
// StartUpError without a settings row.
struct Stamp {
    std::string version;      // trimmed
    bool has_column = false;  // early shops get the column from the upgrade list
};
Stamp read_stamp(database::Connection& connection);
void write_stamp(database::Connection& connection, std::string_view version);

// Returns true if a version is older than another: "1.9.0" than "1.10", "2026/11/21" than "2026/12/01". Two
// versions of which one is a date and one is not, or one has no number, are not compared.
bool is_older(std::string_view version, std::string_view than);

}  // namespace startup
