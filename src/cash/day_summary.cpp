#include "cash/day_summary.h"

namespace cash {

namespace {

using common::Amount;
using database::Fragment;
using database::quoted;
using database::Sql;

}  // namespace

// Invoices, total sales, credit sales, card sales, cash sales, credit returns, cash returns, tips, surplus,
// shortage, net cash.
const std::array<std::string_view, 11> summary_headings{
    "عدد الفواتير", "اجمالي المبيعات", "مبيعات آجلة", "مبيعات إئتمان", "مبيعات نقدية", "مرتجعات آجلة",
    "مرتجع نقدي",   "اكراميـــــات",   "زيادة جردية", "عجز جـــــردي", "صافي نقــــدي"};

DaySummary& DaySummary::operator+=(const DaySummary& other) {
    invoices += other.invoices;
    for (std::size_t i = 0; i < columns.size(); ++i)
        columns[i] += other.columns[i];
    return *this;
}

std::array<std::string, 11> DaySummary::cells() const {
    std::array<std::string, 11> texts;
    texts[0] = std::to_string(invoices);
    for (std::size_t i = 1; i < columns.size(); ++i)
        texts[i] = columns[i].text();
    return texts;
}

DaySummary compute_summary(database::Connection& connection, const Drawer& drawer, const common::Date& day) {
    // Every query compares the date alone and ignores the time.
    const Sql of_day = Sql("") + drawer.code + " and date =" + quoted(day) + " and stcode = " + drawer.store;
    const auto read = [&](const Sql& statement) {
        return Amount(database::number_of(connection.scalar(statement)));
    };
    const auto invoices_sum = [&](Fragment condition) {
        return read(Sql("select sum(ptot) as xs from sales where ptype = ") + of_day + condition);
    };

    DaySummary summary;
    summary.invoices = database::integer_of(
        connection.scalar(Sql("select count(pnum) as xc from sales where ptype = ") + of_day));
    auto& column = summary.columns;
    column[4] = invoices_sum(" and ctype = 0 and vcode = -1 and (stype = 0 Or stype = 2)");
    column[2] = invoices_sum(" and (ctype = 0 Or ctype = 1) and vcode <> -1 ");
    column[3] = invoices_sum(" and ctype = 0 and vcode = -1 and stype = 1 ");
    column[1] = column[2] + column[3] + column[4];
    const Amount counted = read(Sql("select sum(aml) as xs from mor_les where ptype = ") + of_day);
    if (counted > Amount()) column[8] = counted;
    if (counted < Amount()) column[9] = -counted;
    column[7] = read(Sql("select sum(disboun) as xs from sales where ptype = ") + of_day +
                     " and ctype = 0 and vcode = -1 and stype = 2 ");
    const auto returns =
        connection.query(Sql("select sum(ptot) as xs ,sum(disboun) as xy from sales where ptype = ") +
                         of_day + " and (ctype = 2 Or ctype = 3) and vcode = -1");
    if (!returns.empty())
        column[6] = Amount(returns.front().number("xs")) + Amount(returns.front().number("xy"));
    column[5] = invoices_sum(" and (ctype = 2 Or ctype = 3) and vcode <> -1");
    column[10] = column[4] - column[6] - column[7] + column[8] - column[9];
    return summary;
}

}  // namespace cash
