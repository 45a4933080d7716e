// A shop whose every list has the same number of rows.
#pragma once

#include <filesystem>

#include "bench/sizes.h"

namespace bench {

// The size of the shop with that many items.
constexpr Sizes list_sizes(int rows) {
    return {rows * 10};
}

// Makes the shop anew: items, customers, receivers of tips, walk-in customers, stores and offers; on the last
// day as many cash invoices of drawer 1, in its last shift of as many; and this month as many receipts from
// customer 1.
void make_list_shop(const std::filesystem::path& file, int rows);

}  // namespace bench
