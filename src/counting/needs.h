// What a shop is running out of, and what will soon expire.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/amount.h"
#include "common/date_time.h"
#include "database/connection.h"

namespace counting {

struct LowItem {
    std::int64_t item = 0;
    std::string name;
    std::string group;
    double held = 0;     // base units
    double minimum = 0;  // items.mquan
    double missing() const { return minimum - held; }
};
// The items whose stock is below their minimum, in one store or in all together, the group's names in order.
// Items that are no longer sold and services do not count.
std::vector<LowItem> read_low_stock(database::Connection& connection, std::optional<std::int64_t> store = {});

// How many days ahead expiring goods are listed unless the owner chooses otherwise.
inline constexpr int days_ahead = 30;

struct ExpiringBatch {
    std::int64_t item = 0;
    std::string name;
    std::int64_t store = 0;
    std::string store_name;
    common::Date expiry;
    double held = 0;  // base units
    double cost = 0;  // of a base unit
    // Below 0 for goods that are past their date.
    long days_left(const common::Date& today) const;
    common::Amount value() const { return common::Amount(held * cost); }
};
// The batches with stock whose date is past or comes by `until`, the oldest first.
std::vector<ExpiringBatch> read_expiring(database::Connection& connection, const common::Date& until,
                                         std::optional<std::int64_t> store = {});

// How many rows both lists have.
struct NeedCounts {
    std::size_t low_items = 0;
    std::size_t expiring_batches = 0;
};
NeedCounts count_needs(database::Connection& connection, const common::Date& today);

}  // namespace counting
