// Adds the items of a CSV file to the shop, all of them or none.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "database/connection.h"
#include "goods/item_lines.h"

namespace goods {

struct ImportOutcome {
    std::size_t items = 0;
    std::size_t barcodes = 0;
    std::size_t batches = 0;            // rows of opening stock
    std::vector<LineProblem> problems;  // if there are any, nothing was written
    std::vector<LineProblem> notes;     // to be looked at; they stop nothing
};

// Told how far an import is: bytes read, then lines written, which begin again if they are written one by
// one.
enum class ImportStage { reading, writing };
using ImportProgress = std::function<void(ImportStage stage, std::size_t done, std::size_t total)>;

// Reads a CSV text (item_lines.h) and writes items, makers, groups, barcodes and opening stock in one
// transaction.
ImportOutcome import_items(database::Connection& connection, std::string_view csv, const common::Moment& now,
                           const ImportProgress& progress = {});

}  // namespace goods
