#include "counting/differences.h"

#include <algorithm>
#include <map>
#include <set>

#include "common/numbers.h"
#include "counting/stock_moves.h"

namespace counting {

using database::Connection;
using database::Sql;

namespace {

// Binary sums of decimal quantities are off by some 1e-16; no scale weighs as finely as this.
constexpr int quantity_decimals = 6;

using Key = std::pair<std::int64_t, std::optional<common::Date>>;

void add(Difference& difference, const CountLine& line, double& first_stock) {
    if (line.kind != LineKind::adds) difference = {};
    if (difference.item == 0) first_stock = line.stock;
    difference.item = line.item;
    difference.name = line.name;
    difference.expiry = line.expiry;
    difference.counted = common::round_decimals(difference.counted + line.quantity, quantity_decimals);
    difference.stock = line.stock;
    difference.cost = line.cost;
    difference.moved_meanwhile = common::round_decimals(line.stock - first_stock, quantity_decimals);
    difference.moment = line.moment;
    difference.user = line.user;
    difference.is_missing = line.kind == LineKind::missing;
}

void sort_by_name(std::vector<Difference>& differences) {
    std::ranges::sort(differences, [](const Difference& a, const Difference& b) {
        return std::tie(a.name, a.item, a.expiry) < std::tie(b.name, b.item, b.expiry);
    });
}

// The items, or batches of them, that open counts of the store have counted.
std::set<Key> counted_keys(Connection& connection, const Count& count) {
    std::set<Key> keys;
    for (const auto& row :
         connection.query(Sql("select distinct l.cnum, l.icode, l.edate from till_count_line l inner join "
                              "till_count on l.cnum = till_count.num where l.removed is null and "
                              "till_count.closed is null and till_count.stcode = ") +
                          count.store)) {
        const bool is_whole = row.integer("cnum") != count.number || !count.by_date;
        keys.emplace(row.integer("icode"), is_whole ? std::nullopt : std::optional(row.moment("edate").date));
    }
    return keys;
}

}  // namespace

double Difference::surplus() const {
    return common::round_decimals(counted - stock, quantity_decimals);
}

std::vector<Difference> differences(const std::vector<CountLine>& lines) {
    struct Found {
        Difference difference;
        double first_stock = 0;
    };
    std::map<Key, Found> found;
    for (const CountLine& line : lines) {
        if (line.is_removed) continue;
        Found& one = found[{line.item, line.expiry}];
        add(one.difference, line, one.first_stock);
    }
    std::vector<Difference> list;
    for (auto& [key, one] : found)
        list.push_back(std::move(one.difference));
    sort_by_name(list);
    return list;
}

std::vector<Difference> read_differences(Connection& connection, const Count& count) {
    return differences(read_lines(connection, count));
}

std::vector<Difference> read_missing(Connection& connection, const Count& count, const common::Moment& now) {
    std::vector<Difference> missing;
    if (count.scope == Scope::scanned || !count.is_open()) return missing;
    const std::set<Key> counted = counted_keys(connection, count);
    Sql statement =
        Sql("select stk.icode, stk.edate, items.[name], items.price11, sum(stk.quan) as held from stk inner "
            "join items on stk.icode = items.code where stk.stcode = ") +
        count.store + " and isnull(items.sale_only,0) = 0";
    if (count.scope == Scope::group) statement += Sql(" and items.itype = ") + count.group;
    statement += " group by stk.icode, stk.edate, items.[name], items.price11";
    std::map<Key, Difference> found;
    for (const auto& row : connection.query(statement)) {
        const std::int64_t item = row.integer("icode");
        const auto expiry = count.by_date ? std::optional(expiry_of(row)) : std::nullopt;
        if (counted.contains({item, std::nullopt}) || counted.contains({item, expiry})) continue;
        Difference& one = found[{item, expiry}];
        one.item = item;
        one.name = row.text("name");
        one.expiry = expiry;
        one.stock = common::round_decimals(one.stock + row.number("held"), quantity_decimals);
        one.cost = row.number("price11");
        one.moment = now;
        one.is_missing = true;
    }
    for (auto& [key, one] : found)
        if (one.stock != 0) missing.push_back(std::move(one));
    sort_by_name(missing);
    return missing;
}

Totals totals_of(const std::vector<Difference>& differences) {
    Totals totals;
    totals.items = differences.size();
    for (const Difference& one : differences) {
        const common::Amount value = one.value();
        if (value < common::Amount())
            totals.shortage -= value;
        else
            totals.surplus += value;
    }
    return totals;
}

}  // namespace counting
