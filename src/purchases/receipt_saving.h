// Saving a receipt of goods or a return: its rows, stock, costs and prices, the supplier's balance and, if it
// is paid at once, the voucher, in one transaction.
#pragma once

#include <stdexcept>

#include "common/refusal.h"
#include "purchases/receipt.h"
#include "signin/session.h"

namespace purchases {

struct SavedReceipt {
    std::int64_t number = 0;
    common::Amount balance;  // what the supplier is owed afterwards
};

// Why the document cannot be saved in the shop as it is now.
class Refused : public std::runtime_error {
  public:
    explicit Refused(common::Refusal why) : std::runtime_error(why.text), refusal(std::move(why)) {}
    common::Refusal refusal;
};

// The number under which the document with this id was saved; nothing if it was not saved.
std::optional<std::int64_t> number_of(database::Connection& connection, const Receipt& receipt);

// Throws Refused, and Error; nothing is written then. A document that was saved before is not saved again.
SavedReceipt save(database::Connection& connection, const signin::Session& session, const Receipt& receipt,
                  const common::Moment& now);

}  // namespace purchases
