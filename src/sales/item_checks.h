// Whether an item may be rung up at all, whatever its stock.
#pragma once

#include <optional>
#include <string_view>

#include "sales/item_lookup.h"

namespace sales {

// The message of the first check that fails; none when the item may be entered.
std::optional<std::string_view> item_refusal(const Item& item, bool is_return);

}  // namespace sales
