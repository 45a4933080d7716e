// The average cost of a base unit of an item, over what is in stock.
#pragma once

namespace purchases {

// The item's stock in all stores, in base units, and what one of them costs; a cost of 0 is unknown.
struct Valued {
    double quantity = 0;
    double cost = 0;
};

// After goods came in: the average by quantity and value, or the cost of the new goods if nothing of known
// cost was in stock. `value` is what all new goods cost together.
Valued with_goods(const Valued& stock, double quantity, double value);

// After goods left at the value they came in at: what remains keeps the rest of the value. The cost is
// unchanged if no goods remain, or if the rest of the value would be negative.
Valued without_goods(const Valued& stock, double quantity, double value);

}  // namespace purchases
