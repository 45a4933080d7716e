// The direct receipt: an account customer pays at the till.
#pragma once

#include "accounts/voucher_saving.h"
#include "signin/session.h"

namespace accounts {

struct DirectReceiptFields {
    std::optional<std::int64_t> customer;
    std::string amount = "0.00";
};
common::FormTable<DirectReceiptFields> direct_receipt_form();
std::optional<common::Refusal> check_direct_receipt(database::Connection& connection,
                                                    const DirectReceiptFields& fields);

struct DirectReceipt {
    SavedVoucher saved;
    PrintedVoucher paper;  // only if it is saved
};
// Writes a cash receipt of the amount into the workstation's drawer, dated `date`, and lowers what the
// customer owes by it. If it throws, nothing was written. Throws std::invalid_argument if the customer has no
// row or the amount is not above 0; check_direct_receipt() refuses both.
DirectReceipt write_direct_receipt(database::Connection& connection, const signin::Session& session,
                                   const common::Services& services, std::int64_t customer,
                                   const common::Date& date, common::Amount amount);

}  // namespace accounts
