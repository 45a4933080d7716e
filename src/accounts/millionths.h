// Sums of statements of account. Amounts are added in millionths. As whole numbers they add up the same in
// any order, and they are finer than any amount that other programs write. They are rounded only when they
// are shown.
#pragma once

#include <cmath>
#include <cstdint>

#include "common/amount.h"

namespace accounts {

using Millionths = std::int64_t;
inline constexpr double millionths_in_one = 1e6;

inline Millionths millionths(double amount) {
    return std::llround(amount * millionths_in_one);
}

inline common::Amount shown(Millionths amount) {
    return common::Amount(static_cast<double>(amount) / millionths_in_one);
}

}  // namespace accounts
