#include "sales/invoice_text.h"

#include <iterator>

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
TALLVEX_JSON(Line, item_code, name, group, quantity, price, discount, factor, unit_code, unit_name,
             salver_code, unit_cost, balance, stock_kept, clearance, below_stock, marked, source_kind,
             source_store, expiry, returnable, sold_quantity, sold_discount, approvals)
TALLVEX_JSON(Invoice, kind, payment, price_level, number, date, store, customer, customer_name, walk_in,
             tips_receiver, card, permit_opened, permit_number, worker, worker_name, note, suppress_receipt,
             original, lines, approvals, discount_percent)
TALLVEX_JSON(PaymentTaken, paid, change)
TALLVEX_JSON(InvoiceToSave, invoice, payment, moment, shift, user, user_name, cash_point, claim)

std::string text_of(const InvoiceToSave& save) {
    // What a line has like a new one is left out, because every save writes the text: reading puts it back.
    static const nlohmann::json plain = Line();
    nlohmann::json content = save;
    for (nlohmann::json& line : content["invoice"]["lines"])
        for (auto field = line.begin(); field != line.end();)
            field = *field == plain[field.key()] ? line.erase(field) : std::next(field);
    return common::json_text(content);
}

InvoiceToSave read_invoice_to_save(std::string_view text) {
    return common::from_json_text<InvoiceToSave>(text);
}

}  // namespace sales
