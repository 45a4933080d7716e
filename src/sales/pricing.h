// What an item costs on the invoice: price levels, units, the active sale period.
#pragma once

#include <optional>
#include <string_view>

#include "sales/item_lookup.h"

namespace sales {

inline constexpr int retail_level = 2;
inline constexpr int wholesale_level = 3;
inline constexpr int last_level = 5;

// The price level that `basic.main_p` preselects: 0 retail, 1 wholesale.
int default_level(std::int64_t main_p);

// "وحدة" unit, "عبوة" pack, "كرتونة" carton.
std::string_view unit_name(int unit_level);

// The price of the item's unit at a level, less the period discount, rounded to the two decimals that are
// shown so that what the customer sees is what he is charged. None where the card has no such price.
std::optional<double> entry_price(const Item& item, int price_level);

// True when the price comes from the active sale period with a percent: such a line takes no further
// discount.
bool is_clearance(const Item& item);

}  // namespace sales
