// What people type into a field: amounts, codes and dates. Western, Arabic-Indic and Eastern Arabic-Indic
// digits count alike, surrounding blanks are ignored, and nothing is guessed. (Plain numbers and quantities:
// numbers.h.)
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "common/amount.h"
#include "common/date_time.h"

namespace common {

struct TypedAmount {
    Amount value;
    std::string_view refusal;  // why it was refused, for the cashier; empty if it is good
    bool is_good() const { return refusal.empty(); }
};
// An amount of money. A blank field counts as 0; non-numbers, amounts below zero, of more than nine digits or
// with more than two decimals are refused.
TypedAmount read_amount(std::string_view text);

// A code: a whole number from 1 to the largest that the database's int holds.
std::optional<std::int64_t> read_code(std::string_view text);

// A date: year first (2026/11/22, 2026-11-22, 20261122) or day first with a four-digit year (22/11/2026); the
// parts are joined by "/", "-" or ".". A time behind the date is ignored, a time alone or an impossible date
// refused.
std::optional<Date> read_date(std::string_view text);

}  // namespace common
