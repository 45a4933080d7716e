// The shifts and cash movements of the measured shop.
#pragma once

#include "bench/sizes.h"
#include "database/connection.h"

namespace bench {

// A shift of each drawer for each day, the last ones open; vouchers, bank rows, cash in and out and expenses,
// one of each for every 100 invoices; a transfer to the main drawer and a count of every drawer on every day.
void fill_movements(database::Connection& connection, const Sizes& sizes);

}  // namespace bench
