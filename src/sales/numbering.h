// The invoice number series.
#pragma once

#include <cstdint>

#include "database/connection.h"
#include "sales/invoice.h"

namespace sales {

// The highest number of the series plus 1: sales have one series for cash and one for account customers,
// across all stores; returns and the third kind have one per store.
std::int64_t next_invoice_number(database::Connection& connection, KindOption kind, PaymentOption payment,
                                 std::int64_t store);

}  // namespace sales
