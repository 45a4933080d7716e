// Corrections of a store's stock: what a count found, what is written off.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace counting {

struct StockMove {
    std::int64_t item = 0;
    // The batch; nothing for goods that leave the oldest batch first and come into the newest.
    std::optional<common::Date> expiry;
    double by = 0;  // base units; negative if they leave
};

// The date of a row's batch. Goods without one have a null or common::no_expiry.
inline common::Date expiry_of(const database::Row& batch) {
    return batch.null("edate") ? common::no_expiry : batch.moment("edate").date;
}

// To be called in a transaction. What a batch does not hold is taken from the others of the item, as a sale
// takes it. Throws Error 40001 if a till changes a batch meanwhile.
void move_stock(database::Connection& connection, std::int64_t store, const std::vector<StockMove>& moves);

}  // namespace counting
