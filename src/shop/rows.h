// Rows compiled into the program as CSV texts, so that a new shop needs no data files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace shop {

struct EmbeddedTable {
    std::string_view table;  // the table's name
    std::string_view csv;    // a line of column names, then the rows
};

// The demo shop's rows, one text for each table.
const std::vector<EmbeddedTable>& demo_tables();
// The roll printer's codes of Arabic characters; every new shop gets them.
const std::vector<EmbeddedTable>& printer_code_tables();

// The index of a column by its name in any case.
std::optional<std::size_t> find_column(const std::vector<std::string>& columns, std::string_view name);

// Adds the rows of a CSV text to its table and returns their number. An empty cell is null. Marks in cells:
// "{today}", "{today+30}", "{today-10}" are days from `today`; "{allow:reprint+item_info}" is a permission
// string (users.h). Calls `each_row` after every row.
std::int64_t load_rows(database::Connection& connection, const EmbeddedTable& rows, const common::Date& today,
                       const std::function<void()>& each_row = {});

// A cell with its mark replaced, for the tests of the data.
std::string put_in_marks(const std::string& cell, const common::Date& today);

}  // namespace shop
