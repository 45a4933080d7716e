// The report of a closed shift.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cash/cash_position.h"
#include "cash/drawer_count.h"
#include "common/amount.h"
#include "common/date_time.h"
#include "common/services.h"
#include "database/connection.h"

namespace cash {

struct ShiftReport {
    std::int64_t number = 0;
    std::string worker;
    std::string store;
    std::string drawer;
    common::Moment start;
    common::Moment end;
    std::optional<common::Amount> counted;  // nothing if the shift was closed without a count
    DrawerCount pieces;                     // what it was made of; empty if only the sum was entered
    common::Amount expected;
    common::Amount card_sales;   // of the shift
    common::Amount uncollected;  // telephone orders of the shift that have not been paid yet
    InvoiceDiscounts discounts;  // of the shift

    // Counted less expected; nothing without a count.
    std::optional<common::Amount> difference() const;
    // The number followed by " تقرير ورديه رقم :".
    std::string title() const;
    // Captions and values of label7 worker, label1 shift, label29 start, label19 end, label17 drawer and
    // label22 store.
    std::vector<std::pair<std::string, std::string>> captions() const;
    // Captions and amounts ("0.00"): f1 counted, F2 expected, f3 difference, f4 card sales, then the unpaid
    // telephone orders and the invoice discounts, those that are taken off and those that are not. Without a
    // count the report says so instead of a shortage of everything.
    std::vector<std::pair<std::string, std::string>> amounts() const;
};

// Replaces the user's rows of the printing table with the report's one row. An error is only logged: the
// shift has changed, the printed page needs no more than what was read, and the cashier must not be sent to
// close a closed shift again.
void write_print_row(database::Connection& connection, common::Log& log, const ShiftReport& report,
                     const std::string& user);

}  // namespace cash
