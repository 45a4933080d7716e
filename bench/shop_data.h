// The shop that is measured: made once per size and kept, since making it takes minutes.
#pragma once

#include <filesystem>
#include <string>

#include "bench/sizes.h"

namespace bench {

// What a shop file really holds.
struct Counted {
    std::int64_t items = 0, stock_rows = 0, invoices = 0, lines = 0;
    double megabytes = 0;
};

// The shop file of the given size under `folder`, made when it is missing or was left half-made. Its rows are
// the same on every machine. Throws std::runtime_error when a kept file does not hold what it should.
std::filesystem::path shop_of(const std::filesystem::path& folder, const Sizes& sizes);

Counted count_rows(const std::filesystem::path& shop);

}  // namespace bench
