// How costs and discounts of goods in are typed and shown.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "common/amount.h"
#include "common/refusal.h"

namespace purchases {

inline constexpr int price_decimals = 4;

// A price with the decimals that it has, at most four; empty for 0.
std::string price_text(double price);
// A discount as a value; empty for 0.
std::string discount_text(double value);

// A discount of an amount: a value or "5%". Nothing typed is 0; more than the amount is refused.
std::optional<common::Refusal> read_discount(std::string_view typed, common::Amount of,
                                             std::string_view field, common::Amount& value);

}  // namespace purchases
