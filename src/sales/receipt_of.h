// The receipt of an invoice, as the printers take it.
#pragma once

#include "common/date_time.h"
#include "printing/receipt.h"
#include "sales/invoice.h"
#include "sales/payment.h"
#include "signin/session.h"

namespace sales {

printing::Receipt receipt_of(const Invoice& invoice, const PaymentTaken& payment,
                             const signin::Session& session, std::int64_t shift,
                             const common::TimeOfDay& time);

}  // namespace sales
