// The base schema of a new shop and the upgrade list that brings any shop up to date.
#pragma once

#include "database/connection.h"

namespace database {

// Creates every table, key, index and view of a new shop in an empty database.
void create_base_schema(Connection& connection);

// Runs the 300 entries of the upgrade list in their order. Failures of entries are ignored, because most of
// them have been applied before; only a lost connection ends the list (throws Error).
void run_upgrade_list(Connection& connection);

}  // namespace database
