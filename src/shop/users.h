// The users of a shop, and permission strings as lists of action names for administrators to type.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"
#include "signin/permissions.h"

namespace shop {

struct User {
    std::int64_t code = 0;
    std::string name;
    std::string permissions;
};

// The user with this code, if the text is a number, or with this name. Refused if there is none or several.
User find_user(database::Connection& connection, std::string_view who);

// Adds a user and returns the code, the highest plus one. Refused if the name is empty, too long or taken.
std::int64_t add_user(database::Connection& connection, std::string_view name, std::string_view password,
                      std::string_view permissions);

// The same within a transaction of the caller's.
std::int64_t insert_user(database::Connection& connection, std::string_view name, std::string_view password,
                         std::string_view permissions);

// Refused if a user other than `own` has the name, or no user may have it.
void require_free_name(database::Connection& connection, std::string_view name, std::int64_t own = 0);
// A password as it is stored, without blanks at both ends. Refused if it is too long.
std::string checked_password(database::Connection& connection, std::string_view password);

// Drops blanks at both ends, because sign-in ignores them. Refused if the password is longer than its column.
void set_password(database::Connection& connection, std::int64_t code, std::string_view password);

void set_permissions(database::Connection& connection, std::int64_t code, std::string_view permissions);

// Refuses a name of a user or a shop with a control character or a mark that changes the direction of what
// follows: it could be taken for another name.
void require_plain_name(std::string_view name);

// The same for a user's name. Also refused if it is empty, or a number: that would be taken for a code.
void require_user_name(std::string_view name);

// The length of a permission string.
inline constexpr std::size_t permission_places = 400;

// The permission string with an action allowed or not, at all of its positions.
std::string with_right(std::string_view permissions, signin::Action right, bool allowed);

class UnknownAction : public std::invalid_argument {
  public:
    using std::invalid_argument::invalid_argument;
};

// The permission string of a list of action names, read from left to right: "+" or no sign before a name
// allows it, "-" forbids it. "all" means every position, "named" every action of signin::guarded_actions(),
// "none" nothing, a number that position. A list that begins with "+" or "-" changes `before`; any other
// starts from nothing. Throws UnknownAction for any other word.
std::string permission_string(std::string_view list, std::string_view before = {});

// The names of the actions a permission string allows, in the order of signin::guarded_actions().
std::vector<std::string_view> allowed_actions(std::string_view permissions);

}  // namespace shop
