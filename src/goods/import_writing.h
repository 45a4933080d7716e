// Imports of items: the cards as they are now, and what a line gives for them.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "database/connection.h"
#include "goods/item_card.h"
#include "goods/item_lines.h"
#include "goods/prices.h"

namespace goods {

// The part of a card that an import changes.
struct CardNow {
    std::string name, maker, group, description;
    std::optional<double> minimum, pack, carton;
    bool is_service = false;
    std::array<LevelPrices, units> prices;
    std::vector<CardBarcode> barcodes;
};
// The cards of these items, by code.
std::map<std::int64_t, CardNow> cards_now(database::Connection& connection,
                                          const std::set<std::int64_t>& codes);

// The prices that a line gives for an item that the shop has, and those that come down with them.
std::vector<NewPrice> prices_of(const ItemLine& line, const CardNow& card);
// The barcodes that it adds.
std::vector<CardBarcode> new_barcodes(const ItemLine& line, const CardNow& card);
// Why a line cannot change its item: prices or barcodes for a unit that the item does not have.
std::optional<Words> unit_fault(const ItemLine& line, const CardNow& card);
// A problem of a line that could be read.
inline LineProblem problem_of(const ItemLine& line, const std::string& name, Words reason) {
    return {line.line, std::move(reason), std::to_string(line.code), name};
}
// What a line changes, for people; empty if nothing.
std::string difference_text(const ItemLine& line, const CardNow& card);

}  // namespace goods
