// What a count found: for each item, or each batch of it, what was counted against what the books held then.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/amount.h"
#include "counting/count_lines.h"

namespace counting {

struct Difference {
    std::int64_t item = 0;
    std::string name;
    std::optional<common::Date> expiry;  // nothing in a count of whole items
    double counted = 0;                  // base units
    double stock = 0;                    // what the books held at the moment of the last line
    double cost = 0;                     // of a base unit, then
    // Movements in the books between the first counted line and the last. The difference assumes that these
    // goods left before their shelf was counted; a recount settles it.
    double moved_meanwhile = 0;
    common::Moment moment;    // of the last line
    std::string user;         // of the last line
    bool is_missing = false;  // goods that nobody counted, booked as gone

    double surplus() const;  // below 0 for a shortage
    common::Amount value() const { return common::Amount(surplus() * cost); }
};

// By name. Lines that were removed, and those before a recount, do not count.
std::vector<Difference> differences(const std::vector<CountLine>& lines);
std::vector<Difference> read_differences(database::Connection& connection, const Count& count);

// Goods that the store holds by the books, of the scope of the count, that nobody has counted: with a count
// of 0 at this moment. What another open count has counted is left to that one.
std::vector<Difference> read_missing(database::Connection& connection, const Count& count,
                                     const common::Moment& now);

struct Totals {
    std::size_t items = 0;
    common::Amount surplus;   // the value of what was found above the books
    common::Amount shortage;  // and below them, as an amount above 0
    common::Amount net() const { return surplus - shortage; }
};
Totals totals_of(const std::vector<Difference>& differences);

}  // namespace counting
