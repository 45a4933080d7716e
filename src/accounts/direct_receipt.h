// The direct receipt of the sales screen: an account customer pays at the till.
#pragma once

#include <cstdint>

#include "accounts/voucher_records.h"
#include "common/clock.h"
#include "common/refusal.h"
#include "database/connection.h"
#include "signin/session.h"

namespace accounts {

struct DirectReceiptFields {
    std::optional<std::int64_t> customer;
    std::string amount = "0.00";
};
common::FormTable<DirectReceiptFields> direct_receipt_form();
std::optional<common::Refusal> check_direct_receipt(database::Connection& connection,
                                                    const DirectReceiptFields& fields);

// Writes a cash receipt of the amount into the workstation's drawer, dated `date`, and lowers what the
// customer owes by it. Returns the receipt as it is printed. Throws std::invalid_argument and writes nothing
// if the customer has no row or the amount is not above 0, which check_direct_receipt refuses.
PrintedVoucher write_direct_receipt(database::Connection& connection, const signin::Session& session,
                                    common::Clock& clock, std::int64_t customer, const common::Date& date,
                                    common::Amount amount);

}  // namespace accounts
