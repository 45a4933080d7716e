#include "reports/line_sums.h"

#include <algorithm>
#include <vector>

#include "database/till_tables.h"
#include "reports/discount_share.h"
#include "sales/invoice_key.h"

namespace reports {

using common::Amount;
using database::Fragment;
using database::Row;
using database::Sql;

namespace {

// A line is worth what the till showed: rounded by itself, after the error of binary fractions is removed as
// common::Amount removes it.
constexpr Fragment value_of_line = "round(round(isnull(quan,0) * isnull(price,0) - isnull(disc,0),7),2)";
constexpr Fragment item_of_line = "isnull(icode,-1)";

Sql moved_quantity() {
    return Sql("case when ") + sales::counts_as_sale + " then isnull(quan1,0) when " +
           sales::counts_as_return + " then 0 - isnull(quan1,0) else 0 end";
}

// The invoices of a period that have a discount on the whole, each with its lines one after another.
Sql discounted_lines(const Period& period) {
    return Sql("select sales.pnum, sales.ctype, sales.vcode, sales.stcode, sales.[date], sales.time_, "
               "sales.pdis, saledata.icode, saledata.serial, saledata.quan, saledata.price, saledata.disc, "
               "saledata.time_ as line_time from sales inner join saledata on sales.pnum = saledata.pnum and "
               "sales.ctype = saledata.ctype and sales.stcode = saledata.stcode and sales.[date] = "
               "saledata.[date] and sales.vcode = saledata.vcode where ") +
           in_period("sales.[date]", "sales.stcode", period) +
           " and sales.pdis <> 0 order by sales.[date], sales.stcode, sales.ctype, sales.vcode, sales.pnum, "
           "sales.time_, saledata.serial";
}

// Spreads the discount of one invoice over its lines. If two invoices share a key, rows of the join with the
// other invoice's time are left out, as when a receipt is shown again.
void spread(const std::vector<const Row*>& joined, SumsByItem& sums) {
    const auto is_own = [](const Row* row) {
        return row->moment("line_time").time == row->moment("time_").time;
    };
    std::vector<const Row*> lines = joined;
    if (std::ranges::any_of(lines, is_own))
        std::erase_if(lines, [&](const Row* row) { return !is_own(row); });
    std::vector<Amount> values;
    for (const Row* line : lines)
        values.emplace_back(line->number("quan") * line->number("price") - line->number("disc"));
    const Row& header = *lines.front();
    const std::vector<Amount> shares = shares_of(Amount(header.number("pdis")), values);
    const bool is_sale = sales::key_of(header).is_sale();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        LineSums& item = sums[lines[i]->null("icode") ? general_item : lines[i]->integer("icode")];
        (is_sale ? item.discounts : item.returned) += is_sale ? shares[i].value() : -shares[i].value();
    }
}

void spread_discounts(database::Connection& connection, const Period& period, SumsByItem& sums) {
    const database::Result rows = connection.query(discounted_lines(period));
    std::vector<const Row*> invoice;
    for (const Row& row : rows) {
        if (!invoice.empty() && sales::identity_of(*invoice.front()) != sales::identity_of(row)) {
            spread(invoice, sums);
            invoice.clear();
        }
        invoice.push_back(&row);
    }
    if (!invoice.empty()) spread(invoice, sums);
}

}  // namespace

LineSums& LineSums::operator+=(const LineSums& other) {
    quantity += other.quantity;
    sold += other.sold;
    discounts += other.discounts;
    returned += other.returned;
    cost += other.cost;
    return *this;
}

void add_lines(database::Connection& connection, const Period& period, SumsByItem& sums) {
    const Sql statement = Sql("select item, sum(") + moved_quantity() + ") as quantity, sum(case when " +
                          sales::counts_as_sale + " then " + value_of_line +
                          " else 0 end) as sold, sum(case when " + sales::counts_as_return + " then " +
                          value_of_line + " else 0 end) as returned from (select " + item_of_line +
                          " as item, ctype, quan1, quan, price, disc from saledata where " +
                          in_period("[date]", "stcode", period) + ") as counted group by item";
    for (const Row& row : connection.query(statement))
        sums[row.integer("item")] +=
            LineSums{row.number("quantity"), row.number("sold"), 0, row.number("returned"), 0};
    spread_discounts(connection, period, sums);
}

std::unordered_map<std::int64_t, double> moved_quantities(database::Connection& connection,
                                                          const Period& period) {
    std::unordered_map<std::int64_t, double> moved;
    for (const Row& row : connection.query(
             Sql("select icode, sum(") + moved_quantity() + ") as quantity from saledata where " +
             in_period("[date]", "stcode", period) + " and icode is not null group by icode"))
        moved[row.integer("icode")] = row.number("quantity");
    return moved;
}

void add_costs(database::Connection& connection, CostKey key, const Period& period, const goods::Costs& costs,
               CostByKey& by_key) {
    if (key == CostKey::day)
        for (const Row& row : connection.query(
                 Sql("select [date], icode, sum(") + moved_quantity() + ") as quantity from saledata where " +
                 in_period("[date]", "stcode", period) + " and icode is not null group by [date], icode"))
            by_key[common::days_from_epoch(row.moment("date").date)] +=
                row.number("quantity") * costs.today(row.integer("icode"));
    if (!costs.have_changed()) return;
    // For items whose cost has changed since, each line by its own moment.
    database::unless_table_is_missing([&] {
        for (const Row& row : connection.query(
                 Sql("select icode, [date], time_, ") + moved_quantity() +
                 " as quantity from saledata where " + in_period("[date]", "stcode", period) +
                 " and icode in (select icode from till_price where unit = 1 and level = 1 and moment >= " +
                 database::quoted(period.first) + ")")) {
            const std::int64_t item = row.integer("icode");
            const common::Moment at{row.moment("date").date, row.moment("time_").time};
            by_key[key == CostKey::item ? item : common::days_from_epoch(at.date)] +=
                row.number("quantity") * (costs.of(item, at) - costs.today(item));
        }
    });
}

std::unordered_map<std::int64_t, ItemName> read_item_names(database::Connection& connection) {
    std::unordered_map<std::int64_t, ItemName> names;
    const database::Result rows = connection.query("select code, [name], itype from items");
    names.reserve(rows.size());
    for (const Row& row : rows)
        names.emplace(row.integer("code"), ItemName{row.text("name"), row.integer("itype")});
    return names;
}

std::map<std::int64_t, std::string> read_group_names(database::Connection& connection) {
    std::map<std::int64_t, std::string> names;
    for (const Row& row : connection.query("select code, [name] from item_types"))
        names.emplace(row.integer("code"), row.text("name"));
    return names;
}

}  // namespace reports
