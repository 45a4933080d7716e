// Users as the administrator keeps them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "database/connection.h"

namespace admin {

struct User {
    std::int64_t code = 0;
    std::string name;
    std::string permissions;
};

// The user that a text names: by code when it is a number, else by name. Refused when there is none, or when
// several have the name.
User find_user(database::Connection& connection, std::string_view who);

// Adds a user and returns the code, the highest plus one. Refused when the name is empty, too long or taken.
std::int64_t add_user(database::Connection& connection, std::string_view name, std::string_view password,
                      std::string_view permissions);

// Refused when the password is longer than its column; blanks around it do not count at sign-in and are
// dropped.
void set_password(database::Connection& connection, std::int64_t code, std::string_view password);

void set_permissions(database::Connection& connection, std::int64_t code, std::string_view permissions);

}  // namespace admin
