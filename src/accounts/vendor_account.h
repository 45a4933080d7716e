// The account of a vendor: how goods and vouchers change what he is owed, and his statement.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "accounts/account_statement.h"
#include "database/connection.h"

namespace accounts {

// purchase.ctype: goods taken in, and goods returned to the vendor.
enum class PurchaseKind { supply = 1, vendor_return = 3 };

// The net of a row of `purchase`: total less discount plus tax.
inline constexpr database::Fragment net_of_purchase = "isnull(ptot,0) - isnull(pdis,0) + isnull(ptax,0)";
// How much such a row adds to what its vendor is owed.
database::Sql effect_of_purchase();

// Movements between two days with the running balance. Credits raise what the vendor is owed.
struct VendorStatement {
    std::vector<StatementRow> rows;  // the first is the balance brought forward, the last the closing one
    common::Amount brought_forward;
    common::Amount credits;
    common::Amount debits;
    common::Amount closing;
};
VendorStatement vendor_statement(database::Connection& connection, std::int64_t vendor,
                                 const common::Date& start, const common::Date& end);

}  // namespace accounts
