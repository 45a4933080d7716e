// Filling tables from CSV texts that are part of the program.
#pragma once

#include <cstdint>
#include <functional>

#include "admin/embedded_rows.h"
#include "common/date_time.h"
#include "database/connection.h"

namespace admin {

// Adds the rows of a CSV text to its table and returns how many. An empty cell is null. Marks in the cells:
// "{today}", "{today+30}", "{today-10}" are days from `today`; "{allow:reprint+item_info}" is the permission
// string of those names (permission_string.h). `each_row` is called after every row.
std::int64_t load_rows(database::Connection& connection, const EmbeddedTable& rows, const common::Date& today,
                       const std::function<void()>& each_row = {});

// The same text with its marks put in, cell by cell; exposed for the tests of the data.
std::string put_in_marks(const std::string& cell, const common::Date& today);

}  // namespace admin
