// The password screen: the signed-in user changes his password.
#pragma once

#include <string_view>

#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace signin {

// True when the password was changed. Every outcome is told to the user; when it is false nothing has
// changed.
bool change_password(database::Connection& connection, const Session& session, common::Services services,
                     std::string_view old_password, std::string_view new_password);

}  // namespace signin
