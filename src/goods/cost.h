// What a base unit of an item cost the shop at a moment: today's cost on the card, followed back through the
// history of its changes.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace goods {

// Reads today's costs of all items and every change of one since a moment.
class Costs {
  public:
    Costs(database::Connection& connection, const common::Moment& since);

    // The cost at a moment that is not before `since`; 0 for an item that the shop does not have, or that
    // has no cost. A change counts from its own second on.
    double of(std::int64_t item, const common::Moment& at) const;
    // The cost on the card today.
    double today(std::int64_t item) const;
    // Returns true if the cost of any item changed since then. If none did, today's cost holds for the whole
    // time.
    bool have_changed() const { return !changes_.empty(); }

  private:
    struct Change {
        common::Moment moment;
        double before = 0;
    };
    std::unordered_map<std::int64_t, double> today_;
    std::unordered_map<std::int64_t, std::vector<Change>> changes_;  // the earliest first
};

}  // namespace goods
