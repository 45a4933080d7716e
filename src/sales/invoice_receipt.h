// The receipt of an invoice, and which of its forms a shop prints when it is saved.
#pragma once

#include <cstdint>

#include "database/connection.h"
#include "printing/receipt.h"
#include "printing/receipt_printer.h"
#include "sales/invoice_text.h"
#include "signin/session.h"

namespace sales {

// The receipt of an invoice, as the printers take it.
printing::Receipt receipt_of(const Invoice& invoice, const PaymentTaken& payment,
                             const signin::Session& session, std::int64_t shift,
                             const common::TimeOfDay& time);

// Reads what print_receipts() needs: the row of `basic`, with an account customer's balance after the
// invoice.
database::Sql receipt_settings(const Invoice& invoice, bool is_saved);
// Prints the receipts that the shop wants for an invoice being saved.
void print_receipts(const database::Result& settings, const signin::Session& session,
                    printing::ReceiptPrinter& printer, const InvoiceToSave& save);

}  // namespace sales
