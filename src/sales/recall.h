// Saved invoices brought back: to show, to reprint, or to start a return from (returns.h).
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
    InvoiceIdentity identity;
    std::int64_t shift = 0;
};

// One row of the receipts list.
struct ReceiptRow {
    InvoiceIdentity identity;
    PaymentOption payment = PaymentOption::cash;
    common::Amount net;
};

// The receipts that this drawer saved on a day, newest first.
std::vector<ReceiptRow> receipts_of_day(database::Connection& connection, std::int64_t store,
                                        std::int64_t cash_point, const common::Date& day);

// The newest invoice of a number in a series (of a store's returns), as it was saved, if there is one.
// Groups are named from the lists.
std::optional<RecalledInvoice> recall_newest(database::Connection& connection, std::int64_t number,
                                             Series series, std::int64_t store, const Lists& lists = {});
// The invoice whose receipt carries that barcode.
std::optional<RecalledInvoice> recall_printed(database::Connection& connection, const ReceiptCode& code,
                                              const Lists& lists = {});
// The invoice of a row of the receipts list.
std::optional<RecalledInvoice> recall_invoice(database::Connection& connection, const ReceiptRow& receipt,
                                              const Lists& lists = {});

// The rows of `saledata` of an invoice, without those of another invoice of the same key.
std::vector<database::Row> line_rows(database::Connection& connection, const InvoiceIdentity& invoice);

}  // namespace sales
