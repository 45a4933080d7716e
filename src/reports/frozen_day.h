// Closed days: the figures of a store's day as they were when it was closed, and what any program has written
// into it, changed or removed since. The table till_day is the tills' own; a shop without it closes no days.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/amount.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "reports/day_rows.h"
#include "signin/session.h"

namespace reports {

struct DayFigure {
    std::string name;
    std::string value;
    bool operator==(const DayFigure&) const = default;
};

// The figures of a store's day: invoices, sales, discounts, returns and net, the net by payment, goods in,
// and the cash of each drawer at its end.
std::vector<DayFigure> day_figures(database::Connection& connection, std::int64_t store,
                                   const common::Date& day);

struct ClosedDay {
    std::int64_t store = 0;
    common::Date day;
    common::Moment closed;
    std::string user;
    std::vector<DayFigure> figures;
    common::Amount net;  // of its sales, one of the figures
};

// Whether a day is closed, so that what is written into it will be shown as changed.
bool is_frozen(database::Connection& connection, std::int64_t store, const common::Date& day);
std::optional<ClosedDay> find_closed_day(database::Connection& connection, std::int64_t store,
                                         const common::Date& day);
// The closed days of a period, the latest first; store 0 is every store.
std::vector<ClosedDay> closed_days(database::Connection& connection, std::int64_t store,
                                   const common::Date& first, const common::Date& last);
// The days of a period on which the store sold and which are not closed, the latest first.
std::vector<common::Date> open_days(database::Connection& connection, std::int64_t store,
                                    const common::Date& first, const common::Date& last);

// The rows of a closed day that are not as they were.
std::vector<ChangedRow> changed_since_closing(database::Connection& connection, std::int64_t store,
                                              const common::Date& day);

// Stores the figures of a day and the rows that made them. Refused for a day to come, for today while a shift
// of the store is open, while a save of the store's tills is unfinished, and for a closed day.
std::optional<common::Refusal> close_day(database::Connection& connection, const signin::Session& session,
                                         common::Clock& clock, std::int64_t store, const common::Date& day);

}  // namespace reports
