// What the cashier may look up about one item: its prices, its stock, its expiry dates.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"

namespace sales {

struct ItemInfo {
    std::int64_t code = 0;
    std::string name;
    std::string price11;  // the unit's cost, "0.00"
    std::string price12;  // retail
    std::string price13;  // wholesale
    std::string profit;   // "ربح متوقع ==> " and what a retail sale of one unit earns
};
// None when the item does not exist.
std::optional<ItemInfo> load_item_info(database::Connection& connection, std::int64_t code);

// " الكمية بالمخزن : " and the store's quantity in base units, or "صفر" (zero) when there is no stock row.
std::string stock_text(database::Connection& connection, std::int64_t item, std::int64_t store);
// One text per stock row of the item, in all stores: "==> yyyy/mm/dd", the nearest first, then "==> بدون
// تاريخ" (no date).
std::vector<std::string> expiry_texts(database::Connection& connection, std::int64_t item);

}  // namespace sales
