// Saved invoices brought back: to show, to reprint, or to start a return from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "sales/invoice.h"
#include "sales/invoice_key.h"
#include "sales/lists.h"

namespace sales {

struct RecalledInvoice {
    Invoice invoice;
    std::int64_t shift = 0;
    common::Moment saved_at;
};

// One row of the receipts list.
struct ReceiptRow {
    InvoiceKey key;
    common::TimeOfDay time;  // of saving
    PaymentOption payment = PaymentOption::cash;
    common::Amount net;
};

// The receipts that this drawer saved on a day, newest first, at most `limit`.
std::vector<ReceiptRow> receipts_of_day(database::Connection& connection, std::int64_t store,
                                        std::int64_t cash_point, const common::Date& day, std::size_t limit);

// The newest invoice of a number in a series (of a store's returns), as it was saved, if there is one.
// Groups are named from the lists.
std::optional<RecalledInvoice> recall_newest(database::Connection& connection, std::int64_t number,
                                             Series series, std::int64_t store, const Lists& lists = {});
// The invoice of a row of the receipts list.
std::optional<RecalledInvoice> recall_invoice(database::Connection& connection, const ReceiptRow& receipt,
                                              const Lists& lists = {});

// A return of what a recalled sale sold and no return has brought back yet: its lines with their prices,
// their share of the discounts and the most that may be returned. Lines of which nothing is left, and items
// sold without stock keeping, are left out. Card and tips sales are returned in cash.
Invoice return_of(database::Connection& connection, const RecalledInvoice& sale);

// The item of the first line that would return more than its sale sold and earlier returns left. Nothing if
// all lines fit, or if the invoice was not started from a sale.
std::optional<std::string> line_beyond_sale(database::Connection& connection, const Invoice& invoice);

}  // namespace sales
