#include "purchases/receipt_saving.h"

#include "accounts/parties.h"
#include "common/numbers.h"
#include "database/transaction.h"
#include "purchases/messages.h"
#include "purchases/receipt_rows.h"
#include "purchases/saved_receipts.h"

namespace purchases {

using common::Refusal;
using database::Connection;
using database::Sql;

namespace {

void check_supplier(Connection& connection, const Receipt& receipt) {
    if (!accounts::find_party(connection, accounts::PartyKind::vendor, *receipt.supplier))
        throw Refused({"receipt_supplier", message::no_such_supplier});
}

// Nothing goes back twice.
void check_returnable(Connection& connection, const Receipt& receipt) {
    if (receipt.source == 0) return;
    const auto former = load_receipt(connection, PurchaseKind::supply, receipt.source);
    if (!former) throw Refused({"", message::no_such_receipt});
    const Receipt left = return_of(connection, *former, receipt.source);
    for (const Line& line : receipt.lines) {
        double most = 0;
        for (const Line& other : left.lines)
            if (other.source == line.source) most = other.quantity;
        if (line.quantity > most + 1e-9)
            throw Refused({"line_quantity", line.name + ": " + std::string(message::most_returnable) +
                                                common::shortest_text(most)});
    }
}

// The receipt that a correction takes back, as the document that does so.
Receipt counter_entry(Connection& connection, const Receipt& correction) {
    const auto former = load_receipt(connection, PurchaseKind::supply, correction.corrects);
    if (!former) throw Refused({"", message::no_such_receipt});
    Receipt counter = return_of(connection, *former, correction.corrects);
    if (counter.lines.empty()) throw Refused({"", message::nothing_left});
    counter.id = correction.id;
    counter.date = correction.date;
    counter.invoice = former->invoice;
    counter.note = std::string(message::counter_note) + std::to_string(correction.corrects);
    return counter;
}

}  // namespace

std::optional<std::int64_t> number_of(Connection& connection, const Receipt& receipt) {
    if (receipt.id == 0) return std::nullopt;
    const auto rows = connection.query(Sql("select pnum from purchase where ctype = ") +
                                       static_cast<int>(receipt.kind) + " and op_n = " + receipt.id);
    if (rows.empty()) return std::nullopt;
    return rows.front().integer("pnum");
}

SavedReceipt save(Connection& connection, const signin::Session& session, const Receipt& receipt,
                  const common::Moment& now) {
    SavedReceipt saved;
    bool is_new = true;
    database::in_transaction(connection, [&] {
        ReceiptRows rows(connection, session, now);
        check_supplier(connection, receipt);
        if (const auto number = number_of(connection, receipt)) {
            saved.number = *number;
            is_new = false;
            return;
        }
        if (receipt.corrects != 0) {
            rows.write(counter_entry(connection, receipt), ReceiptRows::Batches::may_lack);
        } else {
            check_returnable(connection, receipt);
        }
        saved.number = rows.write(receipt, ReceiptRows::Batches::must_hold);
        rows.write_costs();
        if (receipt.drawer) rows.pay(receipt, saved.number);
    });
    connection.make_durable();
    const auto supplier = accounts::find_party(connection, accounts::PartyKind::vendor, *receipt.supplier);
    saved.balance = common::Amount(supplier->balance);
    if (is_new)
        session.note({.kind = receipt.is_return() ? audit::Kind::goods_returned : audit::Kind::goods_received,
                      .what = supplier->name,
                      .amount = receipt.net(),
                      .invoice = saved.number});
    return saved;
}

}  // namespace purchases
