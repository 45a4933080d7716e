// The prices of items: the one way in which the office changes them, and the history of their changes.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"
#include "sales/items.h"
#include "signin/session.h"

namespace goods {

inline constexpr int units = 3;         // unit, pack, carton
inline constexpr int price_levels = 5;  // 1 is the cost, 2 to 5 are selling prices (sales/items.h)

// A price on an item's card, in a unit and at a level.
struct NewPrice {
    std::int64_t item = 0;
    int unit_level = 1;
    int price_level = sales::retail_level;
    double price = 0;
};

struct ChangedPrice {
    NewPrice price;
    std::optional<double> from;  // nothing if the card had none
};

// What the history says changed a price.
namespace why {
inline constexpr std::string_view card = "كارت الصنف";      // the item's card
inline constexpr std::string_view several = "تعديل أسعار";  // several items at once
inline constexpr std::string_view receipt = "بضاعة واردة";  // goods in
inline constexpr std::string_view import = "استيراد ملف";   // an imported file
}  // namespace why

// Returns true for two prices that are written alike.
bool same_price(double one, double other);

// Writes prices on the cards of items that the shop has, and each change into the history, in the transaction
// of the caller. A price that the card already has is left alone. Returns what changed, with what was there
// before. Throws Error 40001 if somebody changed a price meanwhile; the transaction then begins again
// (database/transaction.h).
std::vector<ChangedPrice> change_prices(database::Connection& connection, const signin::Session& session,
                                        const common::Moment& now, const std::vector<NewPrice>& prices,
                                        std::string_view why);

// The prices of a unit on a card, from level 1; nothing where the card has none.
using LevelPrices = std::array<std::optional<double>, price_levels>;
LevelPrices level_prices(const database::Row& card, int unit_level);

// The other selling prices of the unit that come down to a new retail price: those that were not above the
// old one and would be above the new one. Nobody pays more at wholesale than at retail.
std::vector<ChangedPrice> lowered_with(const NewPrice& retail, const LevelPrices& now);

// The cost of an item in all its units, from the cost of one unit. A pack or carton costs as much as the
// units in it, unless the card (a row of items) gives it a cost of its own.
std::vector<NewPrice> costs_of_units(const database::Row& card, double cost_of_unit);

struct PriceHistoryRow {
    NewPrice price;
    std::optional<double> from;
    common::Moment moment;
    std::string user;
    std::string why;
};
// The changes of an item's prices, the latest first; empty if the shop keeps no history.
std::vector<PriceHistoryRow> price_history(database::Connection& connection, std::int64_t item);

}  // namespace goods
