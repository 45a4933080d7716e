// Where a line's goods come from: the selling store, or another store that holds the item.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/prompts.h"
#include "database/connection.h"

namespace stock {

// Returns true if the stock covers the need; equality suffices. Both in base units, compared at the three
// decimals of quantities, so that errors of single-precision columns and of sums decide nothing.
bool stock_suffices(double available, double needed);

struct StoreHolding {
    std::int64_t store = 0;
    std::string name;
    double quantity = 0;  // base units
};

// A unit in which quantities are shown.
struct OfferedUnit {
    int code = 1;
    std::string name;   // "كرتونة" carton, "عبوة" pack, "وحدة" unit
    double factor = 1;  // base units in it
};

// The line-source dialog without its window. Quantities asked for are in the line's unit.
class LineSource {
  public:
    LineSource(database::Connection& connection, common::Prompts& prompts, std::int64_t item, double quantity,
               double factor, std::int64_t selling_store);

    // Every store with what it holds of the item, for the list to choose from. The selling store shows 0.
    const std::vector<StoreHolding>& stores() const { return stores_; }

    // The item's units, the largest first, without those that its card gives no factor for.
    const std::vector<OfferedUnit>& units() const { return units_; }

    // Returns true if the store (0: none chosen) can supply the line beside the base quantity that the other
    // lines of the invoice take from it; else false after showing why, and the dialog stays open.
    bool confirm(std::int64_t store, double taken_by_others = 0);

  private:
    database::Connection& connection_;
    common::Prompts& prompts_;
    std::int64_t item_;
    double base_quantity_;
    std::int64_t selling_store_;
    std::vector<StoreHolding> stores_;
    std::vector<OfferedUnit> units_;
};

}  // namespace stock
