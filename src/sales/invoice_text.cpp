#include "sales/invoice_text.h"

#include "audit/person_json.h"

namespace accounts {

TALLVEX_JSON(WalkInCustomer, code, is_new, name, phone, mail)

}  // namespace accounts

namespace sales {

TALLVEX_JSON(InvoiceKey, number, ctype, vcode, store, date)
TALLVEX_JSON(InvoiceIdentity, key, time)
TALLVEX_JSON(OriginalSale, number, identity)
TALLVEX_JSON(CardPayment, bank_code, holder, reference)
TALLVEX_JSON(Approval, action, approver, value, most)
TALLVEX_JSON(Granted, quantity, price, discount)
TALLVEX_JSON(Line, item_code, name, group, quantity, price, discount, factor, unit_code, unit_name,
             salver_code, unit_cost, balance, stock_kept, clearance, below_stock, marked, source_kind,
             source_store, expiry, returnable, sold_quantity, sold_discount, granted, approvals)
TALLVEX_JSON(Invoice, kind, payment, price_level, number, date, store, customer, customer_name, walk_in,
             tips_receiver, card, permit_opened, permit_number, worker, worker_name, note, suppress_receipt,
             original, lines, approvals, discount_percent, granted_percent)
TALLVEX_JSON(PaymentTaken, paid, change)
TALLVEX_JSON(DraftMark, file, serial, held)
TALLVEX_JSON(InvoiceToSave, invoice, payment, moment, shift, user, user_name, cash_point, claim, draft)
TALLVEX_JSON(RecalledInvoice, invoice, identity, shift)
TALLVEX_JSON(KeptInvoice, invoice, recalled, edited, date_chosen, offer, user, user_name, begun)
TALLVEX_JSON(KeptChange, mark, head, recalled, lines, line_count)

std::string text_of(const InvoiceToSave& save) {
    common::JsonWriter content({"granted", "granted_percent"});
    content.value(save);
    return content.text();
}

InvoiceToSave read_invoice_to_save(std::string_view text) {
    return common::from_json_text<InvoiceToSave>(text);
}

std::string text_of(const KeptInvoice& kept) {
    return common::json_text(kept);
}

KeptInvoice read_kept_invoice(std::string_view text) {
    return common::from_json_text<KeptInvoice>(text);
}

std::string text_of(const KeptChange& change) {
    return common::json_text(change);
}

KeptChange read_kept_change(std::string_view text) {
    return common::from_json_text<KeptChange>(text);
}

}  // namespace sales
