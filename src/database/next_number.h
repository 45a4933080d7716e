// Numbers for rows without a key to protect them: the highest plus one.
#pragma once

#include <cstdint>
#include <vector>

#include "database/connection.h"

namespace database {

// Draws a number by a statement that finds the highest one. To be called in the transaction that also writes
// the row: another till that draws a number waits until it has ended, so that no two get the same.
std::int64_t next_number(Connection& connection, const Sql& highest);
inline std::int64_t next_number(Connection& connection, Fragment highest) {
    return next_number(connection, Sql(highest));
}

// Keeps other tills from drawing a number until this transaction ends.
void hold_numbers(Connection& connection);
// The statements that do so, to go first in a transaction that is sent as one.
std::vector<Command> numbers_hold(Connection& connection);

}  // namespace database
