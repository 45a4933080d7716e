// The direct receipt of the sales screen: an account customer pays at the till.
#pragma once

#include <cstdint>
#include <string>

#include "common/clock.h"
#include "database/connection.h"
#include "signin/session.h"

namespace accounts {

// Writes a cash receipt of the amount paid into the workstation's drawer, dated `date`, and lowers what the
// customer owes by it. Returns the receipt's number. The customer must have a row and the amount be above 0
// (the caller's screen has checked both); otherwise std::invalid_argument, and nothing is written.
std::string write_direct_receipt(database::Connection& connection, const signin::Session& session,
                                 common::Clock& clock, std::int64_t customer, const common::Date& date,
                                 double amount);

}  // namespace accounts
