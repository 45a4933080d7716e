// Invoices as texts (JSON) that hold all of them, to be kept and read back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/date_time.h"
#include "sales/invoice.h"
#include "sales/payment.h"
#include "sales/recall.h"

namespace sales {

// Which draft (draft.h) an invoice is, and which held invoice (held_invoices.h) it was before; 0 for none.
struct DraftMark {
    std::int64_t file = 0;
    std::int64_t serial = 0;
    std::int64_t held = 0;

    bool operator==(const DraftMark&) const = default;
};

// An invoice with everything else that its rows and its receipt are made from.
struct InvoiceToSave {
    Invoice invoice;
    PaymentTaken payment;
    common::Moment moment;  // of the save
    std::int64_t shift = 0;
    std::int64_t user = 0;
    std::string user_name;
    std::int64_t cash_point = 0;
    std::int64_t claim = 0;  // of its number and goods, as long as it is not saved
    DraftMark draft;
};

// Leaves out what was granted for the lines and the discount, because rights are checked before a save
// begins.
std::string text_of(const InvoiceToSave& save);
// These throw std::exception for any other text.
InvoiceToSave read_invoice_to_save(std::string_view text);

// An invoice that is not saved yet, with what belongs to its sale.
struct KeptInvoice {
    Invoice invoice;
    std::optional<RecalledInvoice> recalled;
    bool edited = false;
    bool date_chosen = false;
    std::int64_t offer = 0;
    std::int64_t user = 0;  // who rang it up
    std::string user_name;
    common::Moment begun;
};
std::string text_of(const KeptInvoice& kept);
KeptInvoice read_kept_invoice(std::string_view text);

// What has changed in a kept invoice since its last text.
struct KeptChange {
    DraftMark mark;
    std::optional<std::string> head;  // the text of the invoice without lines and receipt, if that changed
    std::optional<RecalledInvoice> recalled;          // if it is another receipt than before
    std::vector<std::pair<std::size_t, Line>> lines;  // that changed, with their places
    std::size_t line_count = 0;
};
std::string text_of(const KeptChange& change);
KeptChange read_kept_change(std::string_view text);

}  // namespace sales
