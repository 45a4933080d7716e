// The rows of the measured shop, computed from their number, so that both databases hold the same.
#pragma once

#include <cstdint>

#include "bench/sizes.h"
#include "common/date_time.h"

namespace bench {

inline constexpr common::Date last_day{2026, 11, 21};

struct InvoiceRow {
    std::int64_t number;
    common::Moment moment;
    int ctype;  // 5 in 100 are returns
    int stype;  // 10 in 100 by card, 2 in 100 tips
    int vcode;  // 10 in 100 on account
    int drawer;
    double total;
    double disboun;
};

struct MovementRow {  // vouchers, bank, cash in and out, expenses: one of each for every 100 invoices
    common::Moment moment;
    int drawer;
    int kind;  // 0 or 1
    double amount;
};

// A fixed mixing of a number: reproducible noise.
constexpr std::uint32_t noise(std::uint64_t number) {
    number = (number ^ (number >> 33U)) * 0xff51afd7ed558ccdULL;
    number = (number ^ (number >> 33U)) * 0xc4ceb9fe1a85ec53ULL;
    return static_cast<std::uint32_t>(number >> 32U);
}

InvoiceRow invoice_row(const Sizes& sizes, std::int64_t number);
MovementRow movement_row(const Sizes& sizes, std::int64_t number);
inline int movements(const Sizes& sizes) {
    return sizes.invoices / 100;
}

}  // namespace bench
