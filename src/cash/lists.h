// The lists that the cash screens choose from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"

namespace cash {

struct Choice {
    std::int64_t code = 0;
    std::string name;
};

std::vector<Choice> load_stores(database::Connection& connection);
// The drawers of a store, in the order of the table.
std::vector<Choice> load_drawers(database::Connection& connection, std::int64_t store);
std::vector<Choice> load_workers(database::Connection& connection);
std::vector<Choice> load_main_headings(database::Connection& connection);
std::vector<Choice> load_sub_headings(database::Connection& connection, std::int64_t main_heading);

// The name behind a code, "" when the list has none.
std::string name_of(const std::vector<Choice>& list, std::int64_t code);
bool contains(const std::vector<Choice>& list, std::int64_t code);

// An amount as the cash screens accept it: blank counts as 0; nothing for what is no number, is below zero or
// has more than nine digits before the point.
std::optional<double> read_amount(std::string_view text);

}  // namespace cash
