// The goods of the measured shop, computed from their code.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

#include "bench/sizes.h"

namespace bench {

// Kind, brand, sort and weight, the way a grocer writes them: "عصير الواحة مانجو 500 جم".
std::string item_name(std::int64_t code);
// A text with which about one in eighty names begins.
inline constexpr const char* searched_prefix = "عصير ال";

double retail_price(std::int64_t code);  // of the single unit, in quarters
inline double whole_cents(double amount) {
    return std::round(amount * 100) / 100;
}

// The n-th item that is rung up: different ones from all over the table, until all were rung up once.
inline std::int64_t rung_up_item(const Sizes& sizes, std::int64_t n) {
    return 1 + n * 7919 % sizes.items();
}

}  // namespace bench
