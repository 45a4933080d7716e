#include "sales/events.h"

#include "common/numbers.h"
#include "sales/rights.h"

namespace sales {

namespace {

using audit::Event;
using audit::Kind;
using common::Amount;
using signin::Action;

// A line's event without the number of an invoice that is not saved.
Event line_event(Kind kind, const Line& line, std::string what, double amount) {
    return {
        .kind = kind, .what = line.name + std::move(what), .amount = Amount(amount), .item = line.item_code};
}

std::string from_to(const std::string& from, const std::string& to) {
    return ": من " + from + " إلى " + to;  // from … to …
}

// The number of a saved receipt that is on the screen.
std::optional<std::int64_t> saved_number(const Sale& sale) {
    if (sale.partly_saved || sale.shows_saved_receipt()) return sale.invoice.number;
    return std::nullopt;
}

void note_line(const signin::Session& session, const Sale& sale, Event event) {
    event.invoice = saved_number(sale);
    session.note(event);
}

void note_line_save(const signin::Session& session, const Invoice& invoice, const Line& line) {
    const auto note = [&](Event event, Action action) {
        event.invoice = invoice.number;
        event.approver = approver_of(line.approvals, action);
        session.note(event);
    };
    if (line.granted && !is_same_price(line.price, line.granted->price)) {
        const double former = line.granted->price;
        note(line_event(Kind::price_changed, line,
                        from_to(common::format_amount(former), common::format_amount(line.price)),
                        line.quantity * (line.price - former)),
             Action::edit_price);
    }
    if (!has_granted_discount(line))
        note(line_event(Kind::discount, line, "", line.discount), Action::edit_discount);
}

}  // namespace

Event event_of(Kind kind, const Invoice& invoice) {
    std::string what(kind_caption(invoice.kind, invoice.payment));
    what += "، أصناف: " + std::to_string(invoice.lines.size());  // lines: …
    if (!invoice.customer_name.empty()) what += "، " + invoice.customer_name;
    return {.kind = kind, .what = std::move(what), .amount = invoice.net()};
}

void note_deleted_line(const signin::Session& session, const Sale& sale, const Line& line) {
    note_line(session, sale,
              line_event(Kind::line_deleted, line,
                         ": " + common::format_quantity(line.quantity) + " " + line.unit_name + " × " +
                             common::format_amount(line.price),
                         line.total().value()));
}

void note_quantity(const signin::Session& session, const Sale& sale, const Line& line, double former) {
    if (line.quantity >= former) return;
    note_line(session, sale,
              line_event(Kind::quantity_lowered, line,
                         from_to(common::format_quantity(former), common::format_quantity(line.quantity)),
                         (former - line.quantity) * line.price));
}

void note_unit(const signin::Session& session, const Sale& sale, const Line& line, const Line& former) {
    if (line.total() >= former.total()) return;
    note_line(session, sale,
              line_event(Kind::unit_changed, line, from_to(former.unit_name, line.unit_name),
                         (former.total() - line.total()).value()));
}

void note_cancelled(const signin::Session& session, const Sale& sale) {
    if (sale.invoice.lines.empty() || sale.is_only_looked_at()) return;
    note_line(session, sale, event_of(Kind::invoice_cancelled, sale.invoice));
}

void note_save(const signin::Session& session, const Invoice& invoice) {
    if (invoice.is_return()) {
        Event event = event_of(Kind::return_saved, invoice);
        event.invoice = invoice.number;
        event.approver = approver_of(invoice.approvals, Action::return_kind);
        if (invoice.original) event.what += "، من بون رقم " + std::to_string(invoice.original->number);
        session.note(event);
    }
    for (const Line& line : invoice.lines)
        note_line_save(session, invoice, line);
    if (invoice.discount().is_zero() || has_granted_discount(invoice)) return;
    session.note({.kind = Kind::discount,
                  .what = "على البون كله " + common::format_amount(invoice.discount_percent) + "%",
                  .amount = invoice.discount(),
                  .invoice = invoice.number,
                  .approver = approver_of(invoice.approvals, Action::discount_above_ceiling)});
}

}  // namespace sales
