// Adds the items of a CSV file to the shop, all of them or none.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "admin/item_lines.h"
#include "admin/tool.h"
#include "database/connection.h"

namespace admin {

struct ImportOutcome {
    std::size_t items = 0;
    std::size_t barcodes = 0;
    std::size_t batches = 0;            // rows of opening stock
    std::vector<LineProblem> problems;  // if there are any, nothing was written
    std::vector<LineProblem> notes;     // to be looked at; they stop nothing
};

// Reads a CSV text (item_lines.h) and writes items, makers, groups, barcodes and opening stock in one
// transaction.
ImportOutcome import_items(database::Connection& connection, std::string_view csv, Tool& tool);

}  // namespace admin
