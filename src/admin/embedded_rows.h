// Rows compiled into the program as CSV texts, so that it needs no data files beside it.
#pragma once

#include <string_view>
#include <vector>

namespace admin {

struct EmbeddedTable {
    std::string_view table;  // the table's name
    std::string_view csv;    // a line of column names, then the rows; see rows.h for the marks in them
};

// The demo shop's rows, one text for each table.
const std::vector<EmbeddedTable>& demo_tables();
// The roll printer's codes of Arabic characters, which every new shop gets; empty when none is compiled in.
const std::vector<EmbeddedTable>& printer_code_tables();

}  // namespace admin
