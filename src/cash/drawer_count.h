// What was counted in a drawer, by notes and coins.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "common/amount.h"
#include "common/denominations.h"

namespace cash {

struct Pieces {
    common::Amount denomination;
    std::int64_t count = 0;
    common::Amount value() const;
};

struct DrawerCount {
    std::vector<Pieces> pieces;
    common::Amount other;  // what is in none of them
    common::Amount total() const;
};

// A number of pieces as it was typed; blank is 0. Nothing if it is no whole number of 0 or more, or larger
// than any drawer holds.
std::optional<std::int64_t> read_pieces(std::string_view text);

}  // namespace cash
