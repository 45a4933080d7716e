#include "reports/today.h"

#include "database/choices.h"
#include "database/journal.h"
#include "reports/frozen_day.h"

namespace reports {

using common::Date;

namespace {

constexpr int days_looked_back = 31;
constexpr int changes_looked_back = 7;

}  // namespace

std::vector<DayToClose> days_to_close(database::Connection& connection, const Date& today) {
    std::vector<DayToClose> days;
    for (const common::Choice& store : database::load_stores(connection))
        for (const Date& day : open_days(connection, store.code, common::add_days(today, -days_looked_back),
                                         common::add_days(today, -1)))
            days.push_back({store.code, store.name, day});
    return days;
}

Request request_of_today(KindId kind, const common::Moment& now) {
    return {kind, {now.date, now.date, 0}, now, false};
}

Today read_today(database::Connection& connection, const common::Moment& now) {
    Today today;
    const auto until_now = [&](long days_ago) {
        const Date day = common::add_days(now.date, -days_ago);
        return sales_of(connection, {day, day, 0},
                        database::Sql(" and isnull(time_,'00:00:00') <= ") + database::quoted(now.time));
    };
    today.sales = sales_of(connection, {now.date, now.date, 0});
    today.yesterday = until_now(1);
    today.same_weekday = until_now(7);
    const auto table = [&](KindId kind) { return table_of(connection, request_of_today(kind, now)); };
    today.by_hour = table(KindId::sales_by_hour);
    today.by_cashier = table(KindId::sales_by_cashier);
    today.by_payment = table(KindId::sales_by_payment);
    today.drawers = cash_of_drawers(connection, 0, now);
    today.unfinished_saves = database::unfinished_saves(connection).size();
    today.days_to_close = days_to_close(connection, now.date).size();
    return today;
}

std::size_t count_changed_days(database::Connection& connection, const Date& today) {
    std::size_t changed = 0;
    for (const ClosedDay& closed :
         closed_days(connection, 0, common::add_days(today, -changes_looked_back), today))
        if (!changed_since_closing(connection, closed.store, closed.day).empty()) ++changed;
    return changed;
}

}  // namespace reports
