// Stock in and out of a store's expiry batches, as saved invoices move it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "common/date_time.h"
#include "database/recordset.h"

namespace sales {

// The batches of a store that a sale takes from. An item's are read once, when it is first asked for; those
// that another till changes meanwhile are read again, so no movement is lost.
class StockBatches {
  public:
    StockBatches(database::Connection& connection, std::int64_t store)
        : connection_(connection), store_(store) {}

    // The expiry date of the batch from which the next piece would be taken; nothing without stock.
    std::optional<common::Date> oldest(std::int64_t item);
    // Takes a quantity (base units), oldest expiry first. A batch is never driven below 0 while another has
    // stock; what no batch covers is taken from the batch without expiry, which is made when missing.
    void take(std::int64_t item, double quantity);
    // The item's batches are read again: goods have come in from another store.
    void forget(std::int64_t item) { batches_.erase(item); }

  private:
    database::Recordset& batches_of(std::int64_t item);
    bool is_held(database::Recordset& batch) const;
    void take_from_batches(std::int64_t item, double& left);

    database::Connection& connection_;
    std::int64_t store_;
    std::map<std::int64_t, database::Recordset> batches_;
};

// Puts a quantity (base units) back: into the batch of the given expiry date, made when missing; without a
// date into the newest batch, or the batch without expiry when the store holds none.
void put_into_stock(database::Connection& connection, std::int64_t item, std::int64_t store, double quantity,
                    const std::optional<common::Date>& expiry);

}  // namespace sales
