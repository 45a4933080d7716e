// New retail prices that come with a receipt.
#pragma once

#include "goods/prices.h"
#include "purchases/receipt.h"

namespace purchases {

// The price that is `margin` percent above a cost, rounded (goods/price_plan.h).
double price_above(double cost, double margin, int step);

// The new prices that a line asks for: the price typed for its unit, or prices by a margin over the cost of a
// base unit, for every unit that the card sells the item in.
std::vector<goods::NewPrice> new_prices(const Line& line, double base_cost, const database::Row& card);

}  // namespace purchases
