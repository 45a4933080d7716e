// The shifts and cash movements of the measured shop.
#pragma once

#include "bench/sizes.h"
#include "database/connection.h"

namespace bench {

// Adds a shift of each drawer per day, the last ones still open; a voucher, bank row, cash in or out and
// expense for every 100 invoices; and on every day a transfer to the main drawer and a count of every drawer.
void fill_movements(database::Connection& connection, const Sizes& sizes);

}  // namespace bench
