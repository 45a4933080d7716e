// Stock that saved invoices take out of a store's expiry batches and put back.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>
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

// What to do to a store's batches.
struct StockPlan {
    StockChanges changes;
    std::vector<database::Command> commands;
    // A batch is added: if another till adds it meanwhile, there are two.
    bool adds_batch() const;
};

// The batches that a store holds of some items, read together. Movements are planned on them one after the
// other. If another till changes a batch before the plan is carried out, its command fails with Error 40001;
// then everything is read and planned again.
class StockBatches {
  public:
    StockBatches(database::Connection& connection, std::int64_t store, std::set<std::int64_t> items)
        : connection_(connection), store_(store), items_(std::move(items)) {}

    // Reads the batches again when they are next needed.
    void forget() { rows_.reset(); }
    // The expiry date of the batch that the next piece would be taken from; nothing without stock.
    std::optional<common::Date> oldest(std::int64_t item);
    // What the batches of an item hold together, in base units.
    double held(std::int64_t item);
    // Takes a quantity (base units), oldest expiry first, or from the batch of a given date before all
    // others. A batch is never driven below 0 while another has stock. What no batch covers is taken from the
    // batch without expiry; that batch is added if it is missing.
    void take(std::int64_t item, double quantity, StockPlan& plan,
              const std::optional<common::Date>& first = {});
    // Puts a quantity (base units) back into the batch of the given expiry date, and adds that batch if it is
    // missing. Without a date it goes into the newest batch, or into the batch without expiry if the store
    // holds none.
    void put(std::int64_t item, double quantity, const std::optional<common::Date>& expiry, StockPlan& plan);
    // Adds to the batch of an expiry date or of none; a negative quantity takes from it.
    void add(std::int64_t item, double quantity, const std::optional<common::Date>& expiry, StockPlan& plan);

  private:
    struct Batch {
        std::size_t row = 0;                 // among rows_
        std::optional<common::Date> expiry;  // nothing if its column is null
        double quantity = 0;
    };
    std::vector<Batch>& batches_of(std::int64_t item);
    void read();
    void change(std::int64_t item, Batch& batch, double by, StockPlan& plan);

    database::Connection& connection_;
    std::int64_t store_;
    std::set<std::int64_t> items_;
    std::optional<database::Recordset> rows_;
    std::map<std::int64_t, std::vector<Batch>> batches_;  // by item, oldest first
};

// Takes a change of a store's stock back.
void undo(database::Connection& connection, std::int64_t store, const StockChange& change);

}  // namespace sales
