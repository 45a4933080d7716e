// Saved invoices brought back by number: to show, to reprint, or to start a return from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "sales/invoice.h"
#include "sales/screen_lists.h"

namespace sales {

struct RecalledInvoice {
    Invoice invoice;
    std::int64_t shift = 0;
    common::Moment saved_at;
    std::int64_t cash_point = 0;
    std::int64_t user_code = 0;
};

// The invoice of that number in the series that the kind, the payment and (for returns) the store name, as
// saved; the newest when two tills drew the same number, or the one saved at the given time. Nothing when
// there is none. Groups are named from the lists.
std::optional<RecalledInvoice> recall_invoice(database::Connection& connection, std::int64_t number,
                                              KindOption kind, PaymentOption payment, std::int64_t store,
                                              const Lists& lists = {},
                                              const std::optional<common::TimeOfDay>& saved_at = {});

// A return of what a recalled sale sold and no return has brought back yet: its lines, prices and share of
// the discounts, each with the most that may be returned. Lines without a rest, and items that are sold
// without stock keeping, are left out. Card and tips sales are returned in cash.
Invoice return_of(database::Connection& connection, const RecalledInvoice& sale);

// The item of the first line that would return more than its sale sold and earlier returns left; none when
// all fit, or when the invoice was not started from a sale.
std::optional<std::string> line_beyond_sale(database::Connection& connection, const Invoice& invoice);

// One row of the receipts list.
struct ReceiptRow {
    std::int64_t number = 0;
    KindOption kind = KindOption::sale;
    PaymentOption payment = PaymentOption::cash;
    std::int64_t store = 0;
    common::TimeOfDay time;
    double net = 0;
};

// The receipts that this drawer saved on a day, newest first, at most `limit`.
std::vector<ReceiptRow> receipts_of_day(database::Connection& connection, std::int64_t store,
                                        std::int64_t cash_point, const common::Date& day, std::size_t limit);

}  // namespace sales
