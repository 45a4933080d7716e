// The end of a count: its differences become corrections of the stock, or it is given up.
#pragma once

#include "counting/differences.h"

namespace counting {

// Writes the differences to stk and to `modify`, and closes the count, all in one transaction. Each
// difference is that of the moment of counting, so sales since then are kept. `missing_are_gone` also books
// away the goods that nobody counted. A booked count cannot be changed. Returns why not, if it was refused;
// nothing is changed then.
std::optional<common::Refusal> book_count(database::Connection& connection, const signin::Session& session,
                                          common::Clock& clock, const Count& count, bool missing_are_gone);

// Closes the count without a correction.
std::optional<common::Refusal> give_up_count(database::Connection& connection, const signin::Session& session,
                                             common::Clock& clock, const Count& count);

}  // namespace counting
