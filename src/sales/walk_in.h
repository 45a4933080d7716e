// Storing the walk-in customer whom the cashier typed.
#pragma once

#include "database/connection.h"
#include "sales/invoice.h"

namespace sales {

// Adds a new customer under the code proposed, or the next free one when another till has used it meanwhile;
// gives a known one the name, phone and mail of the screen. Afterwards the customer is known and his code is
// the one of his row.
void store_walk_in_customer(database::Connection& connection, WalkInCustomer& customer);

}  // namespace sales
