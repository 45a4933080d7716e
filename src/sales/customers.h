// The customers of an invoice as their tables name them.
#pragma once

#include <string>

#include "database/connection.h"
#include "sales/invoice.h"

namespace sales {

// The name of an account customer; empty if he was deleted.
std::string account_name(database::Connection& connection, std::int64_t code);

// Adds a new customer under the proposed code, or under the next free one if another till has used that code
// meanwhile. Writes name, phone and mail of a known customer. Afterwards the customer is a known one and has
// the code of his row.
void store_walk_in_customer(database::Connection& connection, WalkInCustomer& customer);

}  // namespace sales
