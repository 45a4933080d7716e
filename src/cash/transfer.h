// The transfer of a drawer's cash to the main drawer.
#pragma once

#include <string>

#include "cash/cash_terms.h"
#include "common/clock.h"
#include "common/date_time.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

// What is moved: a drawer's position at a moment, less what stays in it.
struct Removal {
    Drawer drawer;
    std::string drawer_name;
    double position = 0;
    double leave = 0;
    std::string until;  // the moment of the position; its day is the transfer's date
};

// Inserts one transfer from the drawer to the main drawer of the main store and returns its amount, or 0 when
// there is nothing to move: from the main drawer itself, from a position of zero or less, or when the drawer
// holds no more than what stays in it. What was moved out of it at or after the moment is taken off first:
// the position cannot see those transfers (each is stamped with the time of writing), and two shift changes
// would otherwise move the same cash twice.
double move_cash(database::Connection& connection, const signin::Session& session, common::Clock& clock,
                 const Removal& removal);

}  // namespace cash
