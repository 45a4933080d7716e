// What the lines of saved invoices come to by item: quantities, values, their shares of the discounts on
// whole invoices, and what the goods cost when they were sold.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>

#include "database/connection.h"
#include "goods/cost.h"
#include "reports/period.h"

namespace reports {

// A line without an item, of goods that the shop has no card for.
inline constexpr std::int64_t general_item = -1;

struct LineSums {
    double quantity = 0;   // in base units, what came back taken off
    double sold = 0;       // the values of sold lines, after their own discounts
    double discounts = 0;  // their shares of the discounts on whole sales
    double returned = 0;   // the values of returned lines, less such shares
    double cost = 0;       // of `quantity`
    double net() const { return sold - discounts - returned; }
    LineSums& operator+=(const LineSums& other);
};

using SumsByItem = std::unordered_map<std::int64_t, LineSums>;
// Adds the lines of a period, without their cost.
void add_lines(database::Connection& connection, const Period& period, SumsByItem& sums);

// How much of each item left the shop in a period, in base units, less what came back.
std::unordered_map<std::int64_t, double> moved_quantities(database::Connection& connection,
                                                          const Period& period);

// Adds the cost of the goods that left the shop in a period, less those that came back. The cost is that of
// the moment of the sale or of the return. By day (days since 1970/01/01) it is the whole cost; by item only
// the difference from today's cost of LineSums::quantity, because add_lines() has read all lines already.
enum class CostKey { item, day };
using CostByKey = std::unordered_map<std::int64_t, double>;
void add_costs(database::Connection& connection, CostKey key, const Period& period, const goods::Costs& costs,
               CostByKey& by_key);

// How the items are called, and their groups.
struct ItemName {
    std::string name;
    std::int64_t group = 0;
};
std::unordered_map<std::int64_t, ItemName> read_item_names(database::Connection& connection);
std::map<std::int64_t, std::string> read_group_names(database::Connection& connection);

}  // namespace reports
