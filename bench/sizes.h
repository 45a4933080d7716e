// How large the measured shop is.
#pragma once

namespace bench {

struct Sizes {
    int items = 100'000;
    int stock_rows = 300'000;  // three batches of each item
    int invoices = 1'000'000;
    int lines_per_invoice = 5;
    int days = 730;   // the invoices spread over so many days before `last_day`
    int drawers = 3;  // of store 1

    static Sizes full() { return {}; }
    static Sizes tenth() { return {10'000, 30'000, 100'000, 5, 730, 3}; }
    int lines() const { return invoices * lines_per_invoice; }
};

}  // namespace bench
