// Sums of movements, read from the database: each rounded to two decimals, a missing one counting as 0.
#pragma once

#include <string_view>
#include <vector>

#include "cash/cash_terms.h"
#include "common/date_time.h"
#include "database/connection.h"

namespace cash {

struct Sum {
    Movement movement;
    const Reading* reading;
    double amount = 0;  // without the sign
    double counted() const { return reading->sign * amount; }
};

// The one or two sums of a movement.
std::vector<Sum> read_sums(database::Connection& connection, const Procedure& procedure, Movement movement,
                           const Drawer& drawer, const Window& window);

// The sums of a procedure in its order.
std::vector<Sum> read_all_sums(database::Connection& connection, const Procedure& procedure,
                               const Drawer& drawer, const Window& window);

// What they come to: the drawer's cash.
double total_of(const std::vector<Sum>& sums);

// a + b in whole hundredths, so that a balance of nothing is exactly 0.
double add_amounts(double a, double b);

// Up to a moment, for the spans that have no start.
Window until(const common::Moment& moment);

}  // namespace cash
