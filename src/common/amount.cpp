#include "common/amount.h"

#include <algorithm>
#include <cmath>

#include "common/numbers.h"

namespace common {

Amount::Amount(double computed) {
    constexpr double limit = 9e16;
    constexpr int exact_decimals = 7;  // of a quantity with three times a price with four
    if (!std::isfinite(computed)) return;
    hundredths_ = std::llround(
        round_decimals(round_decimals(std::clamp(computed, -limit, limit), exact_decimals), 2) * 100);
}

std::string Amount::text() const {
    const std::uint64_t size = hundredths_ < 0 ? 0 - static_cast<std::uint64_t>(hundredths_)
                                               : static_cast<std::uint64_t>(hundredths_);
    std::string digits = std::to_string(size);
    if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
    digits.insert(digits.size() - 2, 1, '.');
    return hundredths_ < 0 ? "-" + digits : digits;
}

}  // namespace common
