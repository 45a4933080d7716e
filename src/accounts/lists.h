// Lists to choose from, and the checks of what is typed that these screens share.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/choices.h"

namespace accounts {

// An amount typed in a field: blank counts as 0. The message says what is wrong with one that is no number,
// below zero, of more than nine digits, or finer than two decimals.
struct Amount {
    double value = 0;
    std::string_view message;  // empty when the amount is good
};
Amount read_amount(std::string_view text);

// A code typed in a field: a whole number above 0 that fits the database's int.
std::optional<std::int64_t> read_code(std::string_view text);

}  // namespace accounts
