// The goods of the measured shop, computed from their code.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

#include "bench/sizes.h"

namespace bench {

// Kind, brand, sort and weight, as a grocer writes them: "عصير الواحة مانجو 500 جم".
std::string item_name(std::int64_t code);
// What the names of one in about eighty items begin with.
inline constexpr const char* searched_prefix = "عصير ال";

double retail_price(std::int64_t code);  // of the single unit, in quarters
inline double whole_cents(double amount) {
    return std::round(amount * 100) / 100;
}

// The n-th item that is rung up: another one each time until all had their turn, from all over the table.
inline std::int64_t rung_up_item(const Sizes& sizes, std::int64_t n) {
    return 1 + n * 7919 % sizes.items();
}

}  // namespace bench
