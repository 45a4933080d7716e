// The actions that a user's permission string guards, by names that an administrator can type.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace admin {

struct GuardedAction {
    std::string_view name;     // what is typed: "edit_price"
    int position;              // 1-based place in the permission string
    std::string_view meaning;  // what it allows, for lists
};

const std::vector<GuardedAction>& guarded_actions();

// Permission strings have this many characters.
inline constexpr std::size_t permission_places = 400;

class UnknownAction : public std::invalid_argument {
  public:
    using std::invalid_argument::invalid_argument;
};

// The permission string that a list of names stands for: names joined by "+" are allowed, those after a "-"
// are taken away again, left to right. "all" is every place, "named" every action of guarded_actions(),
// "none" nothing, a bare number that place. Starts from `before` where the list begins with "+" or "-", else
// from none. Throws UnknownAction with the word that is none of these.
std::string permission_string(std::string_view list, std::string_view before = {});

// The names of the actions a permission string allows, in the order of guarded_actions().
std::vector<std::string_view> allowed_actions(std::string_view permissions);

}  // namespace admin
