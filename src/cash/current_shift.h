// The last shift of a drawer, and whether it is open.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "common/date_time.h"
#include "database/connection.h"

namespace cash {

struct Shift {
    std::int64_t number = 0;
    std::int64_t worker = 0;
    common::Moment start;
    std::optional<common::Moment> end;  // none while the shift is open
    bool is_open() const { return !end.has_value(); }
};

// The order of a drawer's shifts, as a shift's start writes it and as its close does.
inline constexpr database::Fragment by_number_at_start = "  Order By scode";
inline constexpr database::Fragment by_number_at_close = " Order By scode";

// The drawer's last shift by its number; none before the first. When two workstations have written rows of
// the same number, the shift is open as long as one of them is.
std::optional<Shift> current_shift(database::Connection& connection, std::int64_t store, std::int64_t drawer,
                                   database::Fragment order = by_number_at_start);

// The name of the worker who had a shift of the drawer; "" when the worker has no row or no name.
std::string shift_worker(database::Connection& connection, std::int64_t store, std::int64_t drawer,
                         std::int64_t number);

// The highest shift number of the drawer plus 1.
std::int64_t next_shift_number(database::Connection& connection, std::int64_t store, std::int64_t drawer);

}  // namespace cash
