// Lists to choose from, and the checks of what is typed that these screens share.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"

namespace accounts {

struct Choice {
    std::int64_t code = 0;
    std::string name;
};

std::vector<Choice> choices(const database::Result& rows, std::string_view code, std::string_view name);
bool contains(const std::vector<Choice>& list, std::int64_t code);
std::string name_of(const std::vector<Choice>& list, std::int64_t code);  // "" when the list has none

// How many characters the text columns of a table hold, as the database declares them.
class TextLimits {
  public:
    TextLimits(database::Connection& connection, std::string_view table);
    bool fits(std::string_view column, std::string_view text) const;

  private:
    std::shared_ptr<const database::Connection::Table> table_;
};

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
