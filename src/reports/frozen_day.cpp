#include "reports/frozen_day.h"

#include "audit/event.h"
#include "cash/figures.h"
#include "cash/shift.h"
#include "common/json.h"
#include "common/numbers.h"
#include "database/choices.h"
#include "database/journal.h"
#include "database/recordset.h"
#include "database/till_tables.h"
#include "database/transaction.h"
#include "reports/messages.h"
#include "reports/sales_sums.h"
#include "sales/invoice.h"

namespace reports {

using common::Date;
using common::Refusal;
using database::Connection;
using database::quoted;
using database::Row;
using database::Sql;

TALLVEX_JSON(DayFigure, name, value)

namespace {

constexpr std::string_view net_name = "صافي المبيعات";  // net sales

std::string amount_text(double amount) {
    return common::Amount(amount).text();
}

// Only the columns that a list needs, because the stored rows of a day may be long.
constexpr database::Fragment closed_columns =
    "select stcode, [day], closed, user_name, figures from till_day where ";

ClosedDay closed_day_of(const Row& row) {
    ClosedDay closed{row.integer("stcode"),
                     row.moment("day").date,
                     row.moment("closed"),
                     row.text("user_name"),
                     common::from_json_text<std::vector<DayFigure>>(row.text("figures")),
                     {}};
    for (const DayFigure& figure : closed.figures)
        if (figure.name == net_name) closed.net = common::Amount(common::numeric_value(figure.value));
    return closed;
}

Sql is_day(std::int64_t store, const Date& day) {
    return Sql("stcode = ") + store + " and [day] = " + quoted(day);
}

// The drawer of the store whose last shift is open; nothing if all are closed.
std::optional<std::string> drawer_in_shift(Connection& connection, std::int64_t store) {
    for (const common::Choice& drawer : database::load_drawers(connection, store)) {
        const auto shift = cash::current_shift(connection, store, drawer.code);
        if (shift && shift->is_open()) return drawer.name;
    }
    return std::nullopt;
}

std::optional<Refusal> refusal_of(Connection& connection, const Date& today, std::int64_t store,
                                  const Date& day) {
    if (day > today) return Refusal("", message::day_to_come);
    if (is_frozen(connection, store, day)) return Refusal("", message::day_is_closed);
    for (const auto& save : database::unfinished_saves(connection))
        if (save.store == store) return Refusal("", std::string(message::unfinished_save) + save.title);
    if (day < today) return std::nullopt;
    if (const auto drawer = drawer_in_shift(connection, store))
        return Refusal("", std::string(message::shift_is_open) + *drawer);
    return std::nullopt;
}

}  // namespace

std::vector<DayFigure> day_figures(Connection& connection, std::int64_t store, const Date& day) {
    const Period period{day, day, store};
    SalesByKey by_payment;
    add_sales(connection, SalesKey::payment, period, by_payment);
    SalesSums all;
    for (const auto& [payment, sums] : by_payment)
        all += sums;
    // receipts, returns, sales, discounts, returned, net
    std::vector<DayFigure> figures = {
        {"عدد البونات", std::to_string(all.sales)}, {"عدد المرتجعات", std::to_string(all.returns)},
        {"المبيعات", amount_text(all.sold)},        {"خصم البونات", amount_text(all.discounts)},
        {"المرتجعات", amount_text(all.returned)},   {std::string(net_name), amount_text(all.net())}};
    for (const auto& [payment, sums] : by_payment)
        figures.push_back(
            {"صافي " + std::string(sales::payment_caption(static_cast<sales::PaymentOption>(payment))),
             amount_text(sums.net())});
    for (const common::Choice& drawer : database::load_drawers(connection, store))
        figures.push_back(
            {"رصيد خزينة " + drawer.name,
             cash::compute_figures(connection, {store, drawer.code}, day)[cash::Figure::current_balance]
                 .text()});
    return figures;
}

bool is_frozen(Connection& connection, std::int64_t store, const Date& day) {
    bool found = false;
    database::unless_table_is_missing([&] {
        found = !connection.query(Sql("select stcode from till_day where ") + is_day(store, day)).empty();
    });
    return found;
}

std::optional<ClosedDay> find_closed_day(Connection& connection, std::int64_t store, const Date& day) {
    std::optional<ClosedDay> found;
    database::unless_table_is_missing([&] {
        const auto rows = connection.query(Sql(closed_columns) + is_day(store, day));
        if (!rows.empty()) found = closed_day_of(rows.front());
    });
    return found;
}

std::vector<ClosedDay> closed_days(Connection& connection, std::int64_t store, const Date& first,
                                   const Date& last) {
    std::vector<ClosedDay> days;
    database::unless_table_is_missing([&] {
        for (const Row& row :
             connection.query(Sql(closed_columns) + in_period("[day]", "stcode", {first, last, store}) +
                              " order by [day] desc, stcode"))
            days.push_back(closed_day_of(row));
    });
    return days;
}

std::vector<Date> open_days(Connection& connection, std::int64_t store, const Date& first, const Date& last) {
    SalesByKey by_day;
    add_sales(connection, SalesKey::day, {first, last, store}, by_day);
    for (const ClosedDay& closed : closed_days(connection, store, first, last))
        by_day.erase(common::days_from_epoch(closed.day));
    std::vector<Date> days;
    for (const auto& [day, sums] : by_day)
        days.insert(days.begin(), common::date_from_epoch(static_cast<long>(day)));
    return days;
}

std::vector<ChangedRow> changed_since_closing(Connection& connection, std::int64_t store, const Date& day) {
    std::vector<ChangedRow> changes;
    database::unless_table_is_missing([&] {
        const auto kept = connection.query(Sql("select content from till_day where ") + is_day(store, day));
        if (kept.empty()) return;
        changes =
            changes_between(day_rows_of(kept.front().text("content")), read_day_rows(connection, store, day));
    });
    return changes;
}

std::optional<Refusal> close_day(Connection& connection, const signin::Session& session, common::Clock& clock,
                                 std::int64_t store, const Date& day) {
    const common::Moment now = clock.now();
    std::vector<DayFigure> figures;
    std::optional<Refusal> refused;
    database::in_transaction(connection, [&] {
        refused = refusal_of(connection, now.date, store, day);
        if (refused) return;
        figures = day_figures(connection, store, day);
        database::Recordset days(connection, "select * from till_day");
        days.add();
        days.set("stcode", store);
        days.set("day", day);
        days.set("closed", database::Value(now));
        days.set("user_code", session.user_code);
        days.set("user_name", session.user_name);
        days.set("figures", common::json_text(figures));
        days.set("content", text_of(read_day_rows(connection, store, day)));
        days.update();
    });
    if (refused) return refused;
    connection.make_durable();
    session.note({.kind = audit::Kind::day_closed,
                  .what = std::string(message::day_closed) + common::date_text(day),
                  .amount = common::Amount(sales_of(connection, {day, day, store}).net())});
    return std::nullopt;
}

}  // namespace reports
