// The sales screen's end of an invoice: payment, saving, cancelling, and receipts brought back.
#include "common/numbers.h"
#include "sales/display.h"
#include "sales/messages.h"
#include "sales/pricing.h"
#include "sales/receipt_of.h"
#include "sales/sales_screen.h"
#include "sales/sales_screen_guard.h"
#include "sales/saving_checks.h"
#include "signin/permissions.h"

namespace sales {

namespace permission = signin::permission;

namespace {

bool moves_cash(PaymentOption payment) {
    return payment == PaymentOption::cash || payment == PaymentOption::tips;
}

}  // namespace

// A general item may still wait for its quantity or price; the cursor goes to the line.
bool SalesScreen::lines_complete() {
    for (std::size_t row = 0; row < invoice_.lines.size(); ++row) {
        const Line& line = invoice_.lines[row];
        const bool no_quantity = line.quantity <= 0;
        if (!no_quantity && line.price > 0) continue;
        const std::string_view what = no_quantity ? message::enter_quantity_of : message::enter_price_of;
        outside_.prompts.message(std::string(what) + line.name);
        current_row_ = row;
        return false;
    }
    return true;
}

BeginSave SalesScreen::begin_save() {
    return guarded("begin to save", BeginSave::refused, [&] {
        save_begun_ = false;
        payment_.reset();
        if (recalled_ && !invoice_.is_return() && !outside_.prompts.question(message::save_as_new))
            return BeginSave::refused;
        if (!lines_complete()) return BeginSave::refused;
        // Said before any money is counted; saving checks again.
        const auto shift = check_before_saving(connection_, session_, outside_.prompts, invoice_);
        if (!shift) return BeginSave::refused;
        shift_ = *shift;
        save_begun_ = true;
        if (!moves_cash(invoice_.payment)) return BeginSave::save_now;
        payment_ = std::make_unique<Payment>(outside_.devices, invoice_.net(), load_workers(connection_),
                                             invoice_.worker);
        return BeginSave::ask_payment;
    });
}

void SalesScreen::cancel_payment() {
    if (payment_) payment_->cancel();
    payment_.reset();
    save_begun_ = false;
}

SaveOutcome SalesScreen::SaveInvoice() {
    return guarded("save", SaveOutcome::refused, [&] {
        if (!save_begun_) return SaveOutcome::refused;
        save_begun_ = false;
        PaymentTaken taken;
        if (payment_) {
            const PaymentConfirmed confirmed = payment_->confirm();
            payment_.reset();
            taken = {confirmed.paid, confirmed.change};
            invoice_.worker = confirmed.worker;
            invoice_.worker_name = confirmed.worker_name;
        } else if (invoice_.payment == PaymentOption::card) {
            taken.paid = invoice_.net();
        }
        const SaveOutcome outcome = saving_.save(invoice_, taken);
        if (outcome != SaveOutcome::refused) finish_save(taken);
        if (outcome == SaveOutcome::saved && moves_cash(last_receipt_->invoice.payment)) OpenDrawer();
        return outcome;
    });
}

// From here on the invoice belongs to the database: whatever fails now, it must not be saved a second time.
// Of one that was saved in part the same holds; the message has said what to do.
void SalesScreen::finish_save(const PaymentTaken& taken) {
    last_receipt_ = LastReceipt{invoice_, taken, shift_, outside_.clock.now().time};
    busy_ = false;
    clear();
    busy_ = true;
}

void SalesScreen::reset_invoice() {
    const int level = invoice_.price_level;
    invoice_ = Invoice();
    invoice_.store = chosen_store_;
    invoice_.price_level = level;
    invoice_.date = outside_.clock.now().date;
    current_row_.reset();
    stock_shown_ = {};
    pending_quantity_.reset();
    chosen_customer_ = walk_in_customer;
    recalled_.reset();
    recalled_edited_ = false;
    payment_.reset();
    save_begun_ = false;
    RecalcTotals();
}

void SalesScreen::clear() {
    if (busy_) return;
    // Outside the guard, which would put the old invoice back: an empty screen needs no database.
    reset_invoice();
    guarded("start the next invoice", false, [&] {
        const auto basic = connection_.query("select * from basic");
        invoice_.price_level = default_level(basic.empty() ? 0 : basic.front().integer("main_p"));
        invoice_.date = server_date();
        draw_number();
        return true;
    });
}

bool SalesScreen::CancelInvoice() {
    if (!guarded("cancel the receipt", false,
                 [&] { return outside_.prompts.question(message::cancel_receipt); }))
        return false;
    clear();
    return true;
}

bool SalesScreen::CancelRecord() {
    if (!guarded("cancel the record", false,
                 [&] { return outside_.prompts.question(message::cancel_record); }))
        return false;
    clear();
    return true;
}

bool SalesScreen::recall(std::string_view number) {
    return guarded("recall a receipt", false, [&] {
        const auto typed = common::parse_integer(number);
        auto found =
            typed ? recall_invoice(connection_, *typed, invoice_.kind, invoice_.payment, invoice_.store)
                  : std::nullopt;
        if (!found) {
            outside_.prompts.message(message::no_such_receipt);
            return false;
        }
        reset_invoice();
        invoice_ = found->invoice;
        recalled_ = std::move(found);
        if (!invoice_.lines.empty()) current_row_ = 0;
        line_changed(current_row_);
        return true;
    });
}

bool SalesScreen::start_return() {
    return guarded("start a return", false, [&] {
        if (!recalled_ || recalled_->invoice.is_return()) {
            outside_.prompts.message(message::select_invoice_first);
            return false;
        }
        if (!session_.has_permission(permission::return_kind)) return deny();
        Invoice back = return_of(connection_, *recalled_);
        if (back.lines.empty()) {
            outside_.prompts.message(message::nothing_to_return);
            return false;
        }
        invoice_ = std::move(back);
        invoice_.date = server_date();
        chosen_customer_ = invoice_.customer;
        recalled_edited_ = false;
        draw_number();
        line_changed(0);
        return true;
    });
}

bool SalesScreen::reprint() {
    return guarded("reprint", false, [&] {
        if (!session_.has_permission(permission::reprint)) return deny();
        printing::Receipt receipt;
        if (recalled_) {
            receipt =
                receipt_of(recalled_->invoice, {}, session_, recalled_->shift, recalled_->saved_at.time);
        } else if (last_receipt_) {
            receipt = receipt_of(last_receipt_->invoice, last_receipt_->payment, session_,
                                 last_receipt_->shift, last_receipt_->time);
        } else {
            outside_.prompts.message(message::nothing_to_reprint);
            return false;
        }
        return printer_.print(receipt, printing::Form::reprint);
    });
}

bool SalesScreen::load_invoice(Invoice invoice) {
    return guarded("load an invoice", false, [&] {
        const common::Date today = server_date();
        reset_invoice();
        invoice_ = std::move(invoice);
        if (invoice_.store == 0) invoice_.store = chosen_store_;
        invoice_.date = today;
        chosen_customer_ = invoice_.customer;
        draw_number();
        line_changed(invoice_.lines.empty() ? std::nullopt : std::optional<std::size_t>(0));
        return true;
    });
}

}  // namespace sales
