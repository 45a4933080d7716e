// The journal of a day's invoices under the daily statement.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace cash {

enum class JournalFilter { all, cash_sales, account_sales, cash_returns, account_returns };
extern const std::array<std::string_view, 5> journal_filters;  // their names, in order

struct JournalRow {
    std::int64_t number = 0;
    std::string kind;  // "مبيعات نقدية" ...
    double value = 0;
    std::string salesman;
    std::string party;  // account customer, else vendor, else walk-in customer, else the receiver of the tips
    std::string time;   // "hh:mm AM/PM"; empty if the row has no time
    std::string date;   // "yyyy/mm/dd"
    std::string note;
    std::string user;
    // Hidden columns.
    std::int64_t customer = 0;  // vcode
    int ctype = 0;
    int stype = 0;
    double discount = 0;  // pdis
    int inv_type = 0;
    std::int64_t shift = 0;
    std::string link;       // the receiver's name on a tips sale, else the representative's
    std::string telephone;  // teln

    // The nine visible cells, under journal_headings.
    std::array<std::string, 9> cells() const;
};
extern const std::array<std::string_view, 9> journal_headings;

// The invoices of a store on a day, ordered by number; store 0 is every store.
std::vector<JournalRow> load_journal(database::Connection& connection, std::int64_t store,
                                     const common::Date& day, JournalFilter filter);

}  // namespace cash
