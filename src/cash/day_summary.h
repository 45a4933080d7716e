// The shorter day summary in the statement's grid: the invoice count and ten figures of one drawer's day.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "cash/cash_sums.h"
#include "common/date_time.h"
#include "database/connection.h"

namespace cash {

// The headings of columns 0 to 10; column 0 is the invoice count.
extern const std::array<std::string_view, 11> summary_headings;

struct DaySummary {
    std::int64_t invoices = 0;
    std::array<common::Amount, 11> columns{};  // 1 to 10 are the figures
    DaySummary& operator+=(const DaySummary& other);
    // The cells under the headings: the count, then amounts as "0.00".
    std::array<std::string, 11> cells() const;
};

DaySummary compute_summary(database::Connection& connection, const Drawer& drawer, const common::Date& day);

}  // namespace cash
