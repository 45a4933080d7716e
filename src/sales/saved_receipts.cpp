#include "sales/sales_desk.h"

#include "common/numbers.h"
#include "sales/entry.h"
#include "sales/events.h"
#include "sales/invoice_receipt.h"
#include "sales/messages.h"
#include "sales/returns.h"
#include "sales/saving.h"

namespace sales {

using signin::Action;

namespace {

// For whoever may allow what is asked of a saved receipt.
audit::Event about(std::int64_t number) {
    return {.what = "بون رقم " + std::to_string(number), .invoice = number};  // receipt number …
}

}  // namespace

std::vector<ReceiptRow> SavedReceipts::receipts_today() {
    return look_up("list the receipts", std::vector<ReceiptRow>(), [&] {
        return receipts_of_day(connection_, sale_.chosen_store, session_.cash_point, server_date());
    });
}

bool SavedReceipts::recall(std::string_view number) {
    return change("recall a receipt", false, [&] {
        const std::string typed = normalize_scan(number);
        if (const auto code = read_receipt_code(typed))
            return show(recall_printed(connection_, *code, state_.lists));
        if (typed.empty() || typed.find_first_not_of("0123456789") != std::string::npos) {
            services_.prompts.message(message::wrong_receipt_number);
            return false;
        }
        const auto parsed = common::parse_integer(typed);  // none for a number that no receipt can have
        const Series series = series_of(invoice_.kind, invoice_.payment);
        return show(parsed ? recall_newest(connection_, *parsed, series, invoice_.store, state_.lists)
                           : std::nullopt);
    });
}

bool SavedReceipts::recall(const ReceiptRow& receipt) {
    return change("recall a receipt", false,
                  [&] { return show(recall_invoice(connection_, receipt, state_.lists)); });
}

bool SavedReceipts::show(std::optional<RecalledInvoice> found) {
    if (!found) {
        services_.prompts.message(message::no_such_receipt);
        return false;
    }
    if (!may_replace_invoice()) return false;
    sale_ = empty_sale();
    invoice_ = found->invoice;
    sale_.recalled = std::move(found);
    show_line(invoice_.first_row());
    return true;
}

bool SavedReceipts::start_return() {
    return return_recalled(std::nullopt);
}

bool SavedReceipts::return_recalled(std::optional<signin::Permit> permit) {
    return change("start a return", false, [&] {
        if (!sale_.recalled || sale_.recalled->invoice.is_return() || !sale_.shows_saved_receipt()) {
            services_.prompts.message(message::select_invoice_first);
            return false;
        }
        if (!permit) permit = authorise(Action::return_kind, about(sale_.recalled->invoice.number));
        if (!*permit) return false;
        Invoice back = return_of(connection_, *sale_.recalled);
        if (back.lines.empty()) {
            services_.prompts.message(message::nothing_to_return);
            return false;
        }
        invoice_ = std::move(back);
        permit_return(*permit, invoice_);
        invoice_.date = server_date();
        sale_.date_chosen = false;
        sale_.chosen_customer = invoice_.customer;
        sale_.edited = false;
        NextInvoiceNumber();
        show_line(invoice_.first_row());
        return true;
    });
}

bool SavedReceipts::start_return(const ReceiptRow& receipt) {
    const auto permit = look_up("start a return", signin::Permit(), [&] {
        return authorise(Action::return_kind, about(receipt.identity.key.number));
    });
    if (!permit || !recall(receipt)) return false;
    return_recalled(permit);
    return true;
}

bool SavedReceipts::print_again(const Invoice& invoice, const PaymentTaken& payment, std::int64_t shift,
                                const common::TimeOfDay& time) {
    const auto permit = authorise(Action::reprint, about(invoice.number));
    if (!permit) return false;
    audit::Event event = event_of(audit::Kind::reprint, invoice);
    event.invoice = invoice.number;
    event.approver = permit.approver;
    session_.note(event);
    return state_.printer.print(receipt_of(invoice, payment, session_, shift, time), printing::Form::reprint);
}

bool SavedReceipts::print_again(const RecalledInvoice& recalled) {
    return print_again(recalled.invoice, {}, recalled.shift, recalled.identity.time);
}

bool SavedReceipts::reprint() {
    return look_up("reprint", false, [&] {
        if (sale_.recalled) return print_again(*sale_.recalled);
        if (!state_.last_receipt) {
            services_.prompts.message(message::nothing_to_reprint);
            return false;
        }
        const LastReceipt& last = *state_.last_receipt;
        return print_again(last.invoice, last.payment, last.shift, last.time);
    });
}

bool SavedReceipts::reprint(const ReceiptRow& receipt) {
    return look_up("reprint", false, [&] {
        const auto found = recall_invoice(connection_, receipt, state_.lists);
        if (found) return print_again(*found);
        services_.prompts.message(message::no_such_receipt);
        return false;
    });
}

}  // namespace sales
