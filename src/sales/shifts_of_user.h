// Which of a drawer's shifts a user sold in.
#pragma once

#include <cstdint>
#include <set>

#include "database/connection.h"
#include "signin/session.h"

namespace sales {

// The numbers of the shifts of the workstation's drawer under which the user saved invoices.
std::set<std::int64_t> shifts_of_user(database::Connection& connection, const signin::Session& session,
                                      std::int64_t user);

}  // namespace sales
