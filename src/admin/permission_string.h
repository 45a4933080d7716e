// Permission strings as lists of the names of the actions that they allow, for administrators to type.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace admin {

// Permission strings have this many characters.
inline constexpr std::size_t permission_places = 400;

class UnknownAction : public std::invalid_argument {
  public:
    using std::invalid_argument::invalid_argument;
};

// The permission string of a list of action names, read from left to right: "+" or no sign before a name
// allows it, "-" forbids it. "all" means every place, "named" every action of signin::guarded_actions(),
// "none" nothing, a number that place. A list that begins with "+" or "-" changes `before`; any other starts
// from nothing. Throws UnknownAction for any other word.
std::string permission_string(std::string_view list, std::string_view before = {});

// The names of the actions a permission string allows, in the order of signin::guarded_actions().
std::vector<std::string_view> allowed_actions(std::string_view permissions);

}  // namespace admin
