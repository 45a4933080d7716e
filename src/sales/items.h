// Items of the shop, found by a scanned or typed code: units, prices, and what the cashier may look up.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"
#include "database/sql.h"

namespace sales {

// --- lookup ----------------------------------------------------------------------------------------

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
    double factor = 0;       // base units in that unit; 0 if the card does not say
    // Price levels 1 (cost) to 5 of that unit; nothing where the card has no price.
    std::array<std::optional<double>, 5> prices;
    double period_percent = 0;  // discount of the active sale period
};

// A craftsman's work line: something made, sold piece by piece.
struct CraftsmanLine {
    std::int64_t code = 0;
    std::int64_t item = 0;
    std::optional<double> price;
    double left = 0;  // what may still be sold, or on a return what may still come back
};

enum class Found { item, nothing, shared_barcode };

// The item that a code names, by a barcode or else as its own code, and the unit.
struct Named {
    Found found = Found::nothing;
    std::int64_t item = 0;
    int unit_level = 1;
};
database::Sql barcode_statement(std::string_view text);
// What the text names according to the rows of that statement. The shop need not have such an item.
Named named_by(const database::Result& barcodes, std::string_view text);

// The columns and tables that an item is read from, to stand between "SELECT " and a condition.
inline constexpr database::Fragment item_cards =
    "items.*, IsNull(tmp_price.p_per,0) AS Expr1, tmp_price.s_price FROM items LEFT JOIN tmp_price ON "
    "items.code = tmp_price.icode ";
// The statement that reads an item by its code.
database::Sql item_statement(std::int64_t code);
std::optional<Item> item_of(const database::Result& cards, int unit_level);
Item item_of(const database::Row& card, int unit_level);
std::optional<Item> load_item(database::Connection& connection, std::int64_t code, int unit_level);

struct Lookup {
    Found found = Found::nothing;
    Item item;
};

// Resolves a barcode, else an item code.
Lookup look_up_item(database::Connection& connection, std::string_view text);
// The message if no item was found.
std::optional<std::string_view> lookup_refusal(Found found);
// A work line with something left to sell, or on a return with something sold.
database::Sql craftsman_statement(std::int64_t code, bool is_return);
std::optional<CraftsmanLine> craftsman_line_of(const database::Result& rows, bool is_return);
std::optional<CraftsmanLine> load_craftsman_line(database::Connection& connection, std::int64_t code,
                                                 bool is_return);

// --- price and refusal -----------------------------------------------------------------------------

inline constexpr int retail_level = 2;
inline constexpr int wholesale_level = 3;
inline constexpr int last_level = 5;

// The price level that `basic.main_p` preselects: 0 retail, 1 wholesale.
int default_level(std::int64_t main_p);

// The unit level in a column `scode`; any other number there is the unit.
int unit_level_of(std::int64_t scode);

// "وحدة" unit, "عبوة" pack, "كرتونة" carton.
std::string_view unit_name(int unit_level);

// The price of the item's unit at a level, less the percent of the period, as an amount of money, so that the
// customer is charged what he sees. The price that a period names beside its percent does not count. Nothing
// if the card has no such price.
std::optional<double> entry_price(const Item& item, int price_level);

// Returns true if the price comes from the active sale period with a percent. Such a line takes no further
// discount.
bool is_clearance(const Item& item);

// The message if the card does not say how many base units the item's unit holds.
std::optional<std::string_view> factor_refusal(const Item& item);

// The message of the first check that fails; nothing if the item may be entered.
std::optional<std::string_view> item_refusal(const Item& item, bool is_return);

// --- information -----------------------------------------------------------------------------------

struct ItemInfo {
    std::int64_t code = 0;
    std::string name;
    std::string price11;  // the unit's cost, "0.00"
    std::string price12;  // retail
    std::string price13;  // wholesale
    std::string profit;   // "ربح متوقع ==> " and what a retail sale of one unit earns
};
// Nothing if the item does not exist.
std::optional<ItemInfo> load_item_info(database::Connection& connection, std::int64_t code);

// The stock of an item as the screen shows it.
struct StockShown {
    // " الكمية بالمخزن : " and the store's quantity in base units, or "صفر" (zero).
    std::string quantity;
    // One per stock row, in all stores: "==> yyyy/mm/dd", the nearest first, then "==> بدون تاريخ" (no date).
    std::vector<std::string> expiries;
};
database::Sql expiries_statement(std::int64_t item);
// From the sum of the store's stock (null without a row) and the rows of that statement.
StockShown stock_shown(const database::Value& sum, const database::Result& expiries);
StockShown load_stock_shown(database::Connection& connection, std::int64_t item, std::int64_t store);

}  // namespace sales
