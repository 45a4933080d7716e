// The report of a closed shift as plain data, and its row in the printing table.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace cash {

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
    common::Amount discounts;    // invoice discounts of the shift, which the expected cash still holds

    // The number followed by " تقرير ورديه رقم :".
    std::string title() const;
    // label7 worker, label1 shift, label29 start, label19 end, label17 drawer, label22 store, with their
    // values.
    std::vector<std::pair<std::string, std::string>> captions() const;
    // f1 counted, F2 expected, f3 difference, f4 card sales, the uncollected telephone orders and the invoice
    // discounts; "0.00".
    std::vector<std::pair<std::string, std::string>> amounts() const;
};

// Replaces the user's rows of the printing table by the report's one row.
void write_print_row(database::Connection& connection, const ShiftReport& report, const std::string& user);

}  // namespace cash
