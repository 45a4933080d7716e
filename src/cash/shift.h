// The shifts of a drawer, and the report of a closed one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/amount.h"
#include "common/date_time.h"
#include "database/connection.h"

namespace cash {

struct Shift {
    std::int64_t number = 0;
    std::int64_t worker = 0;
    common::Moment start;
    std::optional<common::Moment> end;  // nothing while the shift is open
    bool is_open() const { return !end.has_value(); }
};

// The order of a drawer's shifts, as the start of a shift spells it and as its close does.
inline constexpr database::Fragment by_number_at_start = "  Order By scode";
inline constexpr database::Fragment by_number_at_close = " Order By scode";

// The drawer's last shift by its number; nothing before the first one. If two workstations have written rows
// of the same number, the shift is open as long as one of them is.
std::optional<Shift> current_shift(database::Connection& connection, std::int64_t store, std::int64_t drawer,
                                   database::Fragment order = by_number_at_start);

// The name of the worker who had a shift of the drawer; "" if the worker has no row or no name.
std::string shift_worker(database::Connection& connection, std::int64_t store, std::int64_t drawer,
                         std::int64_t number);

// The highest shift number of the drawer plus 1.
std::int64_t next_shift_number(database::Connection& connection, std::int64_t store, std::int64_t drawer);

struct ShiftReport {
    std::int64_t number = 0;
    std::string worker;
    std::string store;
    std::string drawer;
    common::Moment start;
    common::Moment end;
    common::Amount counted;
    common::Amount expected;
    common::Amount difference;   // counted less expected
    common::Amount card_sales;   // of the shift
    common::Amount uncollected;  // telephone orders of the shift that have not been paid yet
    common::Amount discounts;    // of the shift; the expected cash still holds them

    // The number followed by " تقرير ورديه رقم :".
    std::string title() const;
    // Captions and values of label7 worker, label1 shift, label29 start, label19 end, label17 drawer and
    // label22 store.
    std::vector<std::pair<std::string, std::string>> captions() const;
    // Captions and amounts ("0.00"): f1 counted, F2 expected, f3 difference, f4 card sales, then the unpaid
    // telephone orders and the invoice discounts.
    std::vector<std::pair<std::string, std::string>> amounts() const;
};

// Replaces the user's rows of the printing table with the report's one row.
void write_print_row(database::Connection& connection, const ShiftReport& report, const std::string& user);

}  // namespace cash
