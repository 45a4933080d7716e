// The lists that the cash screens choose from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/choices.h"

namespace cash {

std::vector<common::Choice> load_main_headings(database::Connection& connection);
std::vector<common::Choice> load_sub_headings(database::Connection& connection, std::int64_t main_heading);

// An amount as the cash screens accept it: blank counts as 0; nothing for what is no number, is below zero or
// has more than nine digits before the point.
std::optional<double> read_amount(std::string_view text);

}  // namespace cash
