// Moving a shop between engines, or making a second one of it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "admin/tool.h"
#include "database/connection.h"

namespace admin {

struct CopyOutcome {
    std::size_t tables = 0;
    std::int64_t rows = 0;
    std::vector<std::string> differences;  // tables whose counts of rows differ afterwards
};

// Copies every table of `source` into `target`, an empty database on either engine: this version's schema,
// plus tables and columns that only the source has, with their declared types; then all rows. At the end the
// rows of every table are counted on both sides.
CopyOutcome copy_shop(database::Connection& source, database::Connection& target, Tool& tool);

}  // namespace admin
