// What may still be returned of a saved sale.
#pragma once

#include <optional>
#include <string>

#include "database/connection.h"
#include "sales/invoice.h"
#include "sales/recall.h"

namespace sales {

// A return of what a recalled sale sold and no return has brought back yet: its lines with their prices,
// their share of the discounts and the most that may be returned. Lines of which nothing is left, and items
// sold without stock keeping, are left out. Card and tips sales are returned in cash. The drawer never held
// the discount of a tips sale, so it comes off the lines.
Invoice return_of(database::Connection& connection, const RecalledInvoice& sale);

// The item of the first line that would return more than its sale sold and earlier returns left. Nothing if
// all lines fit, or if the invoice was not started from a sale.
std::optional<std::string> line_beyond_sale(database::Connection& connection, const Invoice& invoice);

}  // namespace sales
