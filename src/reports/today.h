// What an owner looks at first: today's sales beside those of other days up to the same hour, who sold, how
// it was paid, the cash in the drawers, and what has to be done.
#pragma once

#include <string>
#include <vector>

#include "database/connection.h"
#include "reports/live_cash.h"
#include "reports/report.h"
#include "reports/sales_sums.h"

namespace reports {

// A day of a store that can be closed.
struct DayToClose {
    std::int64_t store = 0;
    std::string store_name;
    common::Date day;
};
// The days with sales before today that are not closed, the latest first, of the last 31 days.
std::vector<DayToClose> days_to_close(database::Connection& connection, const common::Date& today);

struct Today {
    SalesSums sales;
    SalesSums yesterday;     // up to the same time of day
    SalesSums same_weekday;  // of last week, likewise
    Table by_hour;
    Table by_cashier;
    Table by_payment;
    std::vector<DrawerCash> drawers;
    std::size_t unfinished_saves = 0;
    std::size_t days_to_close = 0;
};
Today read_today(database::Connection& connection, const common::Moment& now);
// The request that its tables are made from.
Request request_of_today(KindId kind, const common::Moment& now);
// The number of closed days of the last week whose rows have changed. Reads every row of those days.
std::size_t count_changed_days(database::Connection& connection, const common::Date& today);

}  // namespace reports
