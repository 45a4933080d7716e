// Copies a shop, also from one engine to the other.
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
    std::vector<std::string> differences;  // tables whose numbers of rows differ afterwards
};

// Copies a shop into `target`, an empty database on either engine. Creates this version's schema, adds tables
// and columns that only the source has, copies all rows, and counts the rows of every table on both sides.
CopyOutcome copy_shop(database::Connection& source, database::Connection& target, Tool& tool);

}  // namespace admin
