// The shop that is measured. It is made once per size and kept, because making it takes minutes.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "bench/sizes.h"
#include "database/connection.h"

namespace bench {

// The contents of a shop file.
struct Counted {
    std::int64_t items = 0, stock_rows = 0, invoices = 0, lines = 0;
    double megabytes = 0;
};

// Returns the shop file of the given size under `folder`, and makes it if it is missing or unfinished. Its
// rows are the same on every machine. Throws std::runtime_error if a kept file has other contents.
std::filesystem::path shop_of(const std::filesystem::path& folder, const Sizes& sizes);

Counted count_rows(const std::filesystem::path& shop);

// Inserts the rows 1 to `count`, a fixed number in each transaction.
using Cells = std::vector<database::Value>;
void fill(database::Connection& connection, database::Fragment insert, std::int64_t count,
          const std::function<Cells(std::int64_t)>& row);

// Makes the tables of a shop without invoices, with its goods, stock, people and settings.
void make_goods(database::Connection& connection, const Sizes& sizes);

// Adds a shift of each drawer per day, the last ones still open; a voucher, bank row, cash in or out and
// expense for every 100 invoices; and on every day a transfer to the main drawer and a count of every drawer.
void fill_movements(database::Connection& connection, const Sizes& sizes);

}  // namespace bench
