// What people type into a field: numbers, amounts, codes, dates and times. Western, Arabic-Indic and Eastern
// Arabic-Indic digits count alike, surrounding blanks are ignored, and nothing is guessed.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "common/amount.h"
#include "common/date_time.h"

namespace common {

// Why a text is not a number of 0 or more.
enum class NumberFault {
    none,
    comma,  // it may separate thousands or decimals; neither is guessed
    minus,
    no_number  // a plus counts too: it may mean "more"
};
NumberFault number_fault(std::string_view text);

struct TypedNumber {
    double value = 0;
    std::string_view refusal;  // why it was refused, for the cashier; empty if it is good
    bool is_good() const { return refusal.empty(); }
};
// A number of 0 or more: a quantity, a price, a discount. A comma or a minus is refused with its own reason,
// anything else that is not a number with `wrong`.
TypedNumber read_number(std::string_view text, std::string_view wrong);

struct TypedAmount {
    Amount value;
    std::string_view refusal;  // why it was refused, for the cashier; empty if it is good
    bool is_good() const { return refusal.empty(); }
};
// An amount of money. A blank field counts as 0; what read_number refuses, amounts of more than nine digits
// and those with more than two decimals are refused.
TypedAmount read_amount(std::string_view text);

// A code: a whole number from 1 to the largest that the database's int holds.
std::optional<std::int64_t> read_code(std::string_view text);

// A date: year first (2026/11/22, 2026-11-22, 20261122) or day first with a four-digit year (22/11/2026); the
// parts are joined by "/", "-" or ".". A time behind the date is ignored, a time alone or an impossible date
// refused.
std::optional<Date> read_date(std::string_view text);

// A time of day: "HH:mm" or "HH:mm:ss", with "AM" or "PM" behind it if it is of twelve hours.
std::optional<TimeOfDay> read_time(std::string_view text);

}  // namespace common
