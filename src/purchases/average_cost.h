// What a base unit of an item costs on the average of what is in stock.
#pragma once

namespace purchases {

// The item's stock in all stores, in base units, and what one of them costs; a cost of 0 is unknown.
struct Valued {
    double quantity = 0;
    double cost = 0;
};

// After goods came in: the average by quantity and value. Where nothing of known cost was in stock, what the
// new goods cost. `value` is what all of them cost together.
Valued with_goods(const Valued& stock, double quantity, double value);

// After goods left at the value that they came for: what remains keeps the rest of the value. The cost stays
// where nothing remains, or where less than nothing would remain of the value.
Valued without_goods(const Valued& stock, double quantity, double value);

}  // namespace purchases
