#include "goods/cost.h"

#include <algorithm>

#include "database/till_tables.h"

namespace goods {

using database::quoted;
using database::Row;
using database::Sql;

Costs::Costs(database::Connection& connection, const common::Moment& since) {
    for (const Row& row : connection.query("select code, price11 from items"))
        today_.emplace(row.integer("code"), row.number("price11"));
    database::unless_table_is_missing([&] {
        for (const Row& row : connection.query(
                 Sql("select icode, moment, old_price from till_price where unit = 1 and level = 1 and "
                     "moment > ") +
                 quoted(since) + " order by icode, num"))
            changes_[row.integer("icode")].push_back({row.moment("moment"), row.number("old_price")});
    });
}

double Costs::today(std::int64_t item) const {
    const auto cost = today_.find(item);
    return cost == today_.end() ? 0 : cost->second;
}

double Costs::of(std::int64_t item, const common::Moment& at) const {
    if (const auto changes = changes_.find(item); changes != changes_.end()) {
        const auto next =
            std::ranges::find_if(changes->second, [&](const Change& change) { return change.moment > at; });
        if (next != changes->second.end()) return next->before;
    }
    return today(item);
}

}  // namespace goods
