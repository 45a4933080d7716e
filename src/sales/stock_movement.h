// Stock in and out of a store's expiry batches, as saved invoices move it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>

#include "common/date_time.h"
#include "database/connection.h"

namespace sales {

// Takes a quantity (base units) out of the store's batches of an item, oldest expiry first. A batch is never
// driven below 0 while another has stock; what no batch covers is taken from the batch without expiry, which
// is made when missing. A batch that another till changes meanwhile is read again, so no movement is lost.
void take_from_stock(database::Connection& connection, std::int64_t item, int store, double quantity);

// Puts a quantity (base units) back: into the batch of the given expiry date, made when missing; without a
// date into the newest batch, or the batch without expiry when the store holds none.
void put_into_stock(database::Connection& connection, std::int64_t item, int store, double quantity,
                    const std::optional<common::Date>& expiry);

// The expiry date of each item's batch from which the next piece would be taken; items without stock are left
// out.
std::map<std::int64_t, common::Date> oldest_batches(database::Connection& connection,
                                                    const std::set<std::int64_t>& items, int store);

}  // namespace sales
