// The sales screen's end of an invoice: payment, saving, cancelling, and receipts brought back.
#include "common/numbers.h"
#include "common/text.h"
#include "sales/display.h"
#include "sales/messages.h"
#include "sales/offer_bridge.h"
#include "sales/pricing.h"
#include "sales/receipt_of.h"
#include "sales/sales_screen.h"
#include "sales/sales_screen_guard.h"
#include "sales/saving_checks.h"
#include "sales/saving_messages.h"

namespace sales {

using signin::Action;

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
        services_.prompts.message(std::string(what) + line.name);
        current_row_ = row;
        return false;
    }
    return true;
}

// A receipt saved again is a new one of today, whatever day and batches the recalled one had.
void SalesScreen::renew_recalled() {
    if (invoice_.date == recalled_->invoice.date) invoice_.date = server_date();
    if (invoice_.is_return()) return;
    for (Line& line : invoice_.lines)
        line.expiry.reset();
}

BeginSave SalesScreen::begin_save() {
    return guarded("begin to save", BeginSave::refused, [&] {
        save_begun_ = false;
        payment_.reset();
        if (frozen()) return BeginSave::refused;
        if (shows_saved_receipt()) {
            if (!services_.prompts.question(message::save_as_new)) return BeginSave::refused;
            renew_recalled();
        } else {
            take_day(server_date());
        }
        if (!lines_complete()) return BeginSave::refused;
        if (const auto refused = offer_line_refused(connection_, invoice_)) {
            services_.prompts.message(*refused, common::Icon::exclamation);
            return BeginSave::refused;
        }
        // Said before any money is counted; saving checks again.
        const auto shift = check_before_saving(connection_, session_, services_.prompts, invoice_);
        if (!shift) {
            // Another till may have used the number shown; the next attempt has one of its own.
            if (!shows_saved_receipt()) draw_number();
            return BeginSave::refused;
        }
        shift_ = *shift;
        save_begun_ = true;
        if (!moves_cash(invoice_.payment)) return BeginSave::save_now;
        payment_ = std::make_unique<Payment>(services_.devices, invoice_.net(),
                                             database::load_workers(connection_), invoice_.worker);
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
        take_day(server_date());  // midnight may have passed while the money was counted
        const SaveOutcome outcome = saving_.save(invoice_, taken);
        if (outcome == SaveOutcome::partly_saved) partly_saved_ = saving_.finished_step();
        if (outcome != SaveOutcome::refused) finish_save(taken);
        if (outcome == SaveOutcome::saved && moves_cash(last_receipt_->invoice.payment)) OpenDrawer();
        return outcome;
    });
}

// From here on the invoice belongs to the database: whatever fails now, it must not be saved a second time.
// One that was saved in part stays on the screen, so that the cashier and the manager see what it held.
void SalesScreen::finish_save(const PaymentTaken& taken) {
    last_receipt_ = LastReceipt{invoice_, taken, shift_, services_.clock.now().time};
    if (partly_saved_) return;
    busy_ = false;
    clear();
    busy_ = true;
}

void SalesScreen::reset_invoice() {
    const int level = invoice_.price_level;
    invoice_ = Invoice();
    invoice_.store = chosen_store_;
    invoice_.price_level = level;
    invoice_.date = services_.clock.now().date;
    current_row_.reset();
    stock_shown_ = {};
    chosen_customer_ = walk_in_customer;
    recalled_.reset();
    recalled_edited_ = false;
    date_chosen_ = false;
    partly_saved_.reset();
    loaded_offer_ = 0;
    period_looked_for_ = false;
    payment_.reset();
    save_begun_ = false;
    RecalcTotals();
}

bool SalesScreen::frozen() {
    if (!partly_saved_) return false;
    services_.prompts.message(saving_message::partly_stays, common::Icon::critical);
    return true;
}

bool SalesScreen::may_replace_invoice() {
    if (frozen()) return false;
    const bool only_looked_at = shows_saved_receipt() && !recalled_edited_;
    return invoice_.lines.empty() || only_looked_at || services_.prompts.question(message::cancel_receipt);
}

void SalesScreen::clear() {
    if (busy_) return;
    // Services the guard, which would put the old invoice back: an empty screen needs no database.
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
                 [&] { return services_.prompts.question(message::cancel_receipt); }))
        return false;
    clear();
    return true;
}

bool SalesScreen::CancelRecord() {
    if (!guarded("cancel the record", false,
                 [&] { return services_.prompts.question(message::cancel_record); }))
        return false;
    clear();
    return true;
}

bool SalesScreen::recall(std::string_view number) {
    return guarded("recall a receipt", false, [&] {
        const std::string typed = common::western_digits(common::trim(number));
        if (typed.empty() || typed.find_first_not_of("0123456789") != std::string::npos) {
            services_.prompts.message(message::wrong_receipt_number);
            return false;
        }
        const auto parsed = common::parse_integer(typed);  // none for a number that no receipt can have
        const Series series = series_of(invoice_.kind, invoice_.payment);
        return show_recalled(parsed ? recall_newest(connection_, *parsed, series, invoice_.store, lists_)
                                    : std::nullopt);
    });
}

bool SalesScreen::recall(const ReceiptRow& receipt) {
    return guarded("recall a receipt", false,
                   [&] { return show_recalled(recall_invoice(connection_, receipt, lists_)); });
}

bool SalesScreen::show_recalled(std::optional<RecalledInvoice> found) {
    if (!found) {
        services_.prompts.message(message::no_such_receipt);
        return false;
    }
    if (!may_replace_invoice()) return false;
    reset_invoice();
    invoice_ = found->invoice;
    recalled_ = std::move(found);
    line_changed(invoice_.lines.empty() ? std::nullopt : std::optional<std::size_t>(0));
    return true;
}

std::vector<ReceiptRow> SalesScreen::receipts_today() {
    constexpr std::size_t most_receipts = 500;
    return guarded("list the receipts", std::vector<ReceiptRow>(), [&] {
        return receipts_of_day(connection_, chosen_store_, session_.cash_point, server_date(), most_receipts);
    });
}

bool SalesScreen::start_return() {
    return guarded("start a return", false, [&] {
        if (!recalled_ || recalled_->invoice.is_return() || !shows_saved_receipt()) {
            services_.prompts.message(message::select_invoice_first);
            return false;
        }
        if (!authorise(Action::return_kind)) return false;
        Invoice back = return_of(connection_, *recalled_);
        if (back.lines.empty()) {
            services_.prompts.message(message::nothing_to_return);
            return false;
        }
        invoice_ = std::move(back);
        invoice_.date = server_date();
        date_chosen_ = false;
        chosen_customer_ = invoice_.customer;
        recalled_edited_ = false;
        draw_number();
        line_changed(0);
        return true;
    });
}

bool SalesScreen::reprint() {
    return guarded("reprint", false, [&] {
        if (!authorise(Action::reprint)) return false;
        printing::Receipt receipt;
        if (recalled_) {
            receipt =
                receipt_of(recalled_->invoice, {}, session_, recalled_->shift, recalled_->saved_at.time);
        } else if (last_receipt_) {
            receipt = receipt_of(last_receipt_->invoice, last_receipt_->payment, session_,
                                 last_receipt_->shift, last_receipt_->time);
        } else {
            services_.prompts.message(message::nothing_to_reprint);
            return false;
        }
        return printer_.print(receipt, printing::Form::reprint);
    });
}

bool SalesScreen::reprint(const ReceiptRow& receipt) {
    return guarded("reprint", false, [&] {
        if (!authorise(Action::reprint)) return false;
        const auto found = recall_invoice(connection_, receipt, lists_);
        if (!found) {
            services_.prompts.message(message::no_such_receipt);
            return false;
        }
        return printer_.print(receipt_of(found->invoice, {}, session_, found->shift, found->saved_at.time),
                              printing::Form::reprint);
    });
}

}  // namespace sales
