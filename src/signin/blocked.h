// Users who are blocked: they keep their rows, their names stay on what they did, and they neither sign in
// nor approve. The table till_blocked names them; a shop without it has none.
#pragma once

#include <cstdint>
#include <set>

#include "common/date_time.h"
#include "database/connection.h"
#include "database/reads.h"

namespace signin {

using BlockedUsers = std::set<std::int64_t>;

// Asks for the codes of all blocked users.
void ask_blocked(database::Reads& reads, BlockedUsers& blocked);
BlockedUsers blocked_users(database::Connection& connection);
// Blocks a user, or lets him work again.
void set_blocked(database::Connection& connection, std::int64_t user, bool blocked,
                 const common::Moment& now);

}  // namespace signin
