#include "common/amount.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "common/numbers.h"

namespace common {

namespace {

constexpr int exact_decimals = 7;    // of a quantity with three times a price with four
constexpr double exact_scale = 1e7;  // the same

// The hundredths of a number that can be scaled without a significant error; nothing if its seventh decimal
// is in doubt.
std::optional<std::int64_t> hundredths_of(double computed) {
    constexpr double small = 1e6;
    constexpr double doubt = 0.01;
    constexpr std::int64_t of_a_hundredth = 100'000;
    const double scaled = std::abs(computed) * exact_scale;
    const double whole = std::floor(scaled);
    if (!(std::abs(computed) < small) || std::abs(scaled - whole - 0.5) < doubt) return std::nullopt;
    const std::int64_t rounded = static_cast<std::int64_t>(whole) + (scaled - whole > 0.5 ? 1 : 0);
    const std::int64_t hundredths = (rounded + of_a_hundredth / 2) / of_a_hundredth;
    return computed < 0 ? -hundredths : hundredths;
}

}  // namespace

Amount::Amount(double computed) {
    constexpr double limit = 9e16;
    if (!std::isfinite(computed)) return;
    if (const auto plain = hundredths_of(computed)) {
        hundredths_ = *plain;
        return;
    }
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
