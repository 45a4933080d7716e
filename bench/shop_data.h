// The shop that is measured: made once per size and kept, since making it takes minutes.
#pragma once

#include <filesystem>

#include "bench/sizes.h"

namespace bench {

// The shop file of the given sizes under `folder`, made when it is missing or was left half-made. The rows
// are the same on every machine.
std::filesystem::path shop_of(const std::filesystem::path& folder, const Sizes& sizes);

// The same invoices, stock and movements in plain SQLite tables of their own, with keys and whole-number
// moments as one would lay them out by hand: the yardstick of the ratios.
std::filesystem::path plain_shop_of(const std::filesystem::path& folder, const Sizes& sizes);

}  // namespace bench
