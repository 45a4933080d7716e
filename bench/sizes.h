// The size of the measured shop, and the day on which it is measured.
#pragma once

#include <algorithm>
#include <cstdint>

#include "common/date_time.h"

namespace bench {

inline constexpr common::Date last_day{2026, 11, 21};

// All sizes depend on the number of invoices. They are spread over the two years up to `last_day`, so a
// smaller shop sells less per day.
struct Sizes {
    int invoices = full_invoices;

    static constexpr int full_invoices = 1'000'000;
    static constexpr int days = 730;
    static constexpr int drawers = 3;  // of store 1
    static constexpr int customers = 200;

    int items() const { return std::max(100, invoices / 10); }
    int stock_rows() const { return items() * 3; }  // two batches in store 1, one in store 2
    int lines() const { return invoices * 5; }      // 1 to 9 per invoice
    int movements() const { return std::max(drawers, invoices / 100); }  // of each kind: vouchers, bank, ...
};

// A hash of a number: reproducible noise, the same on every machine.
constexpr std::uint32_t noise(std::uint64_t number) {
    number = (number ^ (number >> 33U)) * 0xff51afd7ed558ccdULL;
    number = (number ^ (number >> 33U)) * 0xc4ceb9fe1a85ec53ULL;
    return static_cast<std::uint32_t>(number >> 32U);
}

}  // namespace bench
