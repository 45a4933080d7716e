// Stock that saved invoices take out of a store's expiry batches and put back.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "common/date_time.h"
#include "database/recordset.h"

namespace sales {

// What a movement did to one batch.
struct StockChange {
    std::int64_t item = 0;
    std::optional<common::Date> expiry;  // of the batch; nothing if its column is null
    double quantity = 0;                 // base units added; negative if they were taken
    bool adds_batch = false;             // the batch was not there before
};
using StockChanges = std::vector<StockChange>;

// The batches of a store that a sale takes from. Those of an item are read once, when they are first needed.
// If another till has changed one since, Error 40001 says so: what was done must then be rolled back and done
// again after forget_all().
class StockBatches {
  public:
    StockBatches(database::Connection& connection, std::int64_t store)
        : connection_(connection), store_(store) {}

    // The expiry date of the batch that the next piece would be taken from; nothing without stock.
    std::optional<common::Date> oldest(std::int64_t item);
    // What the batches of an item hold together, in base units.
    double held(std::int64_t item);
    // Takes a quantity (base units), oldest expiry first, and adds to `done` what it took. A batch is never
    // driven below 0 while another has stock. What no batch covers is taken from the batch without expiry,
    // which is added if it is missing.
    void take(std::int64_t item, double quantity, StockChanges& done);
    // Reads the item's batches again when they are next needed: goods have come in from another store.
    void forget(std::int64_t item) { batches_.erase(item); }
    void forget_all() { batches_.clear(); }

  private:
    database::Recordset& batches_of(std::int64_t item);
    bool is_held(database::Recordset& batch) const;
    void take_from_batches(std::int64_t item, double& left, StockChanges& done);

    database::Connection& connection_;
    std::int64_t store_;
    std::map<std::int64_t, database::Recordset> batches_;
};

// Puts a quantity (base units) back: into the batch of the given expiry date, which is added if it is
// missing; without a date into the newest batch, or into the batch without expiry if the store holds none.
StockChange put_into_stock(database::Connection& connection, std::int64_t item, std::int64_t store,
                           double quantity, const std::optional<common::Date>& expiry);

// Takes a change of a store's stock back.
void undo(database::Connection& connection, std::int64_t store, const StockChange& change);

}  // namespace sales
