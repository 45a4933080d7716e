#include "reports/sales_sums.h"

#include "reports/table.h"
#include "sales/invoice.h"

namespace reports {

using common::Date;
using database::Fragment;
using database::Sql;

namespace {

// Account invoices are told from the others by their customer; the others by `stype`.
constexpr Fragment payment_column = "case when vcode = -1 then isnull(stype,0) else -1 end";
constexpr std::int64_t of_account = -1;

Fragment column_of(SalesKey key) {
    switch (key) {
        case SalesKey::none:
            break;
        case SalesKey::day:
        case SalesKey::month:
            return "[date]";
        case SalesKey::hour:
            return "datepart(hour,isnull(time_,'00:00:00'))";
        case SalesKey::cashier:
            return "isnull([user],0)";
        case SalesKey::store:
            return "isnull(stcode,0)";
        case SalesKey::payment:
            return payment_column;
    }
    return "";
}

std::int64_t key_of(SalesKey key, const database::Row& row) {
    if (key == SalesKey::none) return 0;
    if (key == SalesKey::day) return common::days_from_epoch(row.moment("k").date);
    if (key == SalesKey::month) {
        const Date day = row.moment("k").date;
        return day.year * 12 + day.month - 1;
    }
    const std::int64_t value = row.integer("k");
    if (key != SalesKey::payment) return value;
    return static_cast<std::int64_t>(
        sales::payment_of(value == of_account ? 0 : sales::walk_in_customer, value));
}

Sql sums() {
    return Sql("sum(case when ") + sales::counts_as_sale + " then 1 else 0 end) as sales_, sum(case when " +
           sales::counts_as_return + " then 1 else 0 end) as returns_, sum(case when " +
           sales::counts_as_sale + " then isnull(ptot,0) else 0 end) as sold, sum(case when " +
           sales::counts_as_sale + " then isnull(pdis,0) else 0 end) as discounts, sum(case when " +
           sales::counts_as_return +
           " then isnull(ptot,0) - isnull(pdis,0) else 0 end) as returned from (select ";
}

}  // namespace

double SalesSums::average() const {
    return per(sold - discounts, static_cast<double>(sales));
}

SalesSums& SalesSums::operator+=(const SalesSums& other) {
    sales += other.sales;
    returns += other.returns;
    sold += other.sold;
    discounts += other.discounts;
    returned += other.returned;
    return *this;
}

void add_sales(database::Connection& connection, SalesKey key, const Period& period, SalesByKey& by_key,
               const Sql& extra) {
    const Fragment column = column_of(key);
    Sql statement("select ");
    if (key != SalesKey::none) statement += "k, ";
    statement += sums();
    if (key != SalesKey::none) statement += Sql(column) + " as k, ";
    statement += Sql("ctype, ptot, pdis from sales where ") + in_period("[date]", "stcode", period) + extra +
                 ") as counted";
    if (key != SalesKey::none) statement += " group by k";
    for (const database::Row& row : connection.query(statement))
        by_key[key_of(key, row)] +=
            SalesSums{row.integer("sales_"), row.integer("returns_"), row.number("sold"),
                      row.number("discounts"), row.number("returned")};
}

SalesSums sales_of(database::Connection& connection, const Period& period, const Sql& extra) {
    SalesByKey sums_of_all;
    add_sales(connection, SalesKey::none, period, sums_of_all, extra);
    return sums_of_all[0];
}

Sql condition_of(SalesKey key, std::int64_t value, const Period& period) {
    Period days = period;
    if (key == SalesKey::day) days.first = days.last = common::date_from_epoch(static_cast<long>(value));
    if (key == SalesKey::month) {
        days = month_of(period, {static_cast<int>(value / 12), static_cast<int>(value % 12) + 1, 1});
    }
    Sql condition = in_period("[date]", "stcode", days);
    switch (key) {
        case SalesKey::none:
        case SalesKey::day:
        case SalesKey::month:
            break;
        case SalesKey::hour:
        case SalesKey::cashier:
        case SalesKey::store:
            condition += Sql(" and ") + column_of(key) + " = " + value;
            break;
        case SalesKey::payment: {
            const auto payment = static_cast<sales::PaymentOption>(value);
            condition += Sql(" and ") + payment_column;
            if (payment == sales::PaymentOption::cash)
                condition += Sql(" not in (") + of_account + "," +
                             sales::stype_of(sales::PaymentOption::card) + "," +
                             sales::stype_of(sales::PaymentOption::tips) + ")";
            else
                condition +=
                    Sql(" = ") +
                    (payment == sales::PaymentOption::account ? of_account : sales::stype_of(payment));
            break;
        }
    }
    return condition;
}

}  // namespace reports
