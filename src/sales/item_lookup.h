// From a scanned or typed code to an item, its unit and its prices.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "database/connection.h"

namespace sales {

// The column of `items` that holds a unit level's price at a price level: 1 (cost) to 5.
inline constexpr int cost_level = 1;
std::string price_column(int unit_level, int price_level);

// An item in the unit that its code named.
struct Item {
    std::int64_t code = 0;
    std::string name;
    std::int64_t type = 0;  // items.itype
    bool stopped = false;
    bool sale_only = false;  // sold without stock keeping
    int unit_level = 1;      // 1 unit, 2 pack, 3 carton
    double factor = 0;       // base units in that unit; 0 when the card does not say
    // Price levels 1 (cost) to 5 of that unit; none where the card has no price.
    std::array<std::optional<double>, 5> prices;
    double period_percent = 0;  // discount of the active sale period
    std::optional<double> period_price;
};

// A craftsman's work line: something made, sold piece by piece.
struct CraftsmanLine {
    std::int64_t code = 0;
    std::int64_t item = 0;
    std::optional<double> price;
    double left = 0;  // what may still be sold, or on a return what may still come back
};

enum class Found { item, nothing, shared_barcode };

struct Lookup {
    Found found = Found::nothing;
    Item item;
};

// Resolves a barcode, else an item code.
Lookup look_up(database::Connection& connection, std::string_view text);
// An item by its code in a unit level.
std::optional<Item> load_item(database::Connection& connection, std::int64_t code, int unit_level);
// A work line with something left to sell, or on a return with something sold.
std::optional<CraftsmanLine> load_craftsman_line(database::Connection& connection, std::int64_t code,
                                                 bool is_return);

}  // namespace sales
