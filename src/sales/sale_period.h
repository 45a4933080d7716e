// The sale period of a day, and its prices for all tills in the table `tmp_price`.
#pragma once

#include <cstdint>
#include <optional>

#include "common/date_time.h"
#include "database/connection.h"

namespace sales {

// The number of the sale period that covers a day, if any.
database::Sql sale_period_statement(const common::Date& day);
std::optional<std::int64_t> sale_period_in(const database::Result& periods);

// Returns true if `tmp_price` holds the prices of the period, or nothing without one.
bool holds_period_prices(database::Connection& connection, std::optional<std::int64_t> period);
// Fills it with them. No other till sees the table without prices in between, and an interruption leaves it
// as it was.
void fill_period_prices(database::Connection& connection, std::optional<std::int64_t> period);

}  // namespace sales
