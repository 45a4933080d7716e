#include "counting/needs.h"

#include "database/reads.h"

namespace counting {

using common::Date;
using database::Connection;
using database::quoted;
using database::Sql;

namespace {

// A row for each item that runs short.
Sql low_stock(std::optional<std::int64_t> store) {
    Sql statement = Sql(
        "select items.code, items.[name], item_types.[name] as group_name, items.mquan, "
        "isnull(sum(stk.quan),0) as held from items left join item_types on items.itype = item_types.code "
        "left join stk on stk.icode = items.code");
    if (store) statement += Sql(" and stk.stcode = ") + *store;
    statement +=
        " where items.mquan > 0 and isnull(items.sale_only,0) = 0 and isnull(items.stop,0) = 0 group by "
        "items.code, items.[name], item_types.[name], items.mquan having isnull(sum(stk.quan),0) < "
        "items.mquan";
    return statement;
}

// A row for each batch in stock whose date comes by `until`.
Sql expiring(const Date& until, std::optional<std::int64_t> store) {
    Sql statement =
        Sql("select stk.icode, items.[name], items.price11, stk.stcode, stocks.[name] as store_name, "
            "stk.edate, sum(stk.quan) as held from stk inner join items on stk.icode = items.code left join "
            "stocks on stk.stcode = stocks.code where stk.edate <= ") +
        quoted(until);
    if (store) statement += Sql(" and stk.stcode = ") + *store;
    statement +=
        " group by stk.icode, items.[name], items.price11, stk.stcode, stocks.[name], stk.edate having "
        "sum(stk.quan) > 0";
    return statement;
}

}  // namespace

std::vector<LowItem> read_low_stock(Connection& connection, std::optional<std::int64_t> store) {
    std::vector<LowItem> items;
    for (const auto& row : connection.query(low_stock(store) + " order by item_types.[name], items.[name]"))
        items.push_back({row.integer("code"), row.text("name"), row.text("group_name"), row.number("held"),
                         row.number("mquan")});
    return items;
}

long ExpiringBatch::days_left(const Date& today) const {
    return common::days_from_epoch(expiry) - common::days_from_epoch(today);
}

std::vector<ExpiringBatch> read_expiring(Connection& connection, const Date& until,
                                         std::optional<std::int64_t> store) {
    std::vector<ExpiringBatch> batches;
    for (const auto& row : connection.query(expiring(until, store) + " order by stk.edate, items.[name]"))
        batches.push_back({row.integer("icode"), row.text("name"), row.integer("stcode"),
                           row.text("store_name"), row.moment("edate").date, row.number("held"),
                           row.number("price11")});
    return batches;
}

NeedCounts count_needs(Connection& connection, const Date& today) {
    NeedCounts counts;
    database::Reads reads;
    const auto count = [&reads](const Sql& rows, std::size_t& into) {
        reads.add(Sql("select count(*) from (") + rows + ") as needed", [&into](const auto& result) {
            into = static_cast<std::size_t>(database::integer_of(database::first_cell(result)));
        });
    };
    count(low_stock({}), counts.low_items);
    count(expiring(common::add_days(today, days_ahead), {}), counts.expiring_batches);
    reads.run(connection);
    return counts;
}

}  // namespace counting
