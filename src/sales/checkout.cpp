#include "sales/sales_desk.h"

#include <algorithm>
#include <utility>

#include "database/choices.h"
#include "printing/messages.h"
#include "sales/events.h"
#include "sales/messages.h"
#include "sales/offers.h"
#include "sales/saving.h"
#include "sales/stock_check.h"
#include "sales/unfinished.h"

namespace sales {

namespace {

// Returns true for lines that come from an offer or a saved receipt. Entered lines were checked when they
// were entered.
bool lacks_date_check(const Line& line) {
    return line.moves_stock() && !line.dates_checked;
}

// What the cashier must know before he counts the money of a return.
std::string_view payment_note(const Sale& sale) {
    if (!sale.invoice.is_return()) return {};
    const bool by_card = sale.recalled && !sale.recalled->invoice.is_return() &&
                         sale.recalled->invoice.payment == PaymentOption::card;
    return by_card ? message::card_paid_out : message::paid_out;
}

}  // namespace

// A receipt saved again is a new one of today, with batches of its own and the number that was asked for.
void Checkout::renew_recalled(const common::Date& today) {
    if (invoice_.date == sale_.recalled->invoice.date) invoice_.date = today;
    if (invoice_.is_return()) return;
    for (Line& line : invoice_.lines)
        line.expiry.reset();
}

BeginSave Checkout::begin_save() {
    if (state_.busy) return BeginSave::refused;
    sale_.begun_save.reset();
    refused_field_ = {};
    return change("begin to save", BeginSave::refused, [&] {
        if (settle_all() || frozen() || is_taken_over()) return BeginSave::refused;
        const bool saves_anew = sale_.shows_saved_receipt();
        if (saves_anew && !services_.prompts.question(message::save_as_new)) return BeginSave::refused;
        if (!lines_complete()) return BeginSave::refused;
        common::Date today;
        std::vector<common::Choice> workers;
        OfferLines offer;
        // Checked before any money is counted; saving checks again.
        SavingChecks checks(connection_, session_, services_.prompts, invoice_);
        database::Reads reads;
        ask_day(reads, today);
        if (saves_anew) ask_invoice_number(reads);
        offer.ask(reads, invoice_);
        checks.ask(reads);
        BatchDates dates;
        if (std::ranges::any_of(invoice_.lines, lacks_date_check)) dates.ask(reads, goods_taken(invoice_));
        if (moves_cash(invoice_.payment)) database::ask_workers(reads, workers);
        reads.run(connection_);
        if (saves_anew)
            renew_recalled(today);
        else
            take_day(today);
        if (const auto refused = offer.refused(invoice_)) {
            services_.prompts.message(*refused, common::Icon::exclamation);
            return BeginSave::refused;
        }
        const auto shift = checks.run();
        if (!shift) {
            refused_field_ = checks.refused_field();
            // Another till may have used the number shown, so the next attempt gets a new one.
            NextInvoiceNumber();
            return BeginSave::refused;
        }
        StockCheck check(session_, services_.prompts);
        for (Line& line : invoice_.lines)
            if (lacks_date_check(line) && !check.dates_allow(invoice_, line, dates))
                return BeginSave::refused;
        sale_.begun_save = BegunSave{*shift, nullptr};
        if (!moves_cash(invoice_.payment)) return BeginSave::save_now;
        sale_.begun_save->payment = std::make_shared<Payment>(
            services_.devices, invoice_.net(), std::move(workers), invoice_.worker, payment_note(sale_),
            state_.display_greeting ? std::string_view(*state_.display_greeting) : welcome_text);
        return BeginSave::ask_payment;
    });
}

void Checkout::cancel_payment() {
    if (Payment* open = payment()) open->cancel();
    sale_.begun_save.reset();
}

SaveOutcome Checkout::SaveInvoice() {
    if (state_.busy || !sale_.begun_save) return SaveOutcome::refused;
    const BegunSave begun = *std::exchange(sale_.begun_save, std::nullopt);
    // Nothing is put back after an error: what was saved must not be saved a second time.
    return look_up("save", SaveOutcome::refused, [&] {
        if (is_taken_over()) return SaveOutcome::refused;  // while the money was counted
        PaymentTaken taken;
        if (begun.payment) {
            const PaymentConfirmed confirmed = begun.payment->confirm();
            taken = confirmed.taken;
            invoice_.worker = confirmed.worker;
            invoice_.worker_name = confirmed.worker_name;
        } else if (invoice_.payment == PaymentOption::card) {
            taken.paid = invoice_.net();
        }
        // Midnight may have passed while the money was counted. Date and time of an invoice come from the
        // same moment; a time after midnight under the old date would count a day too early.
        take_day(server_date());
        const SaveOutcome outcome = saving_.save(invoice_, taken, state_.draft.mark());
        if (outcome == SaveOutcome::refused) return outcome;
        state_.last_receipt = LastReceipt{invoice_, taken, begun.shift, saving_.time()};
        if (outcome == SaveOutcome::partly_saved) {
            // It stays on the screen, so that the cashier and the manager see what it held.
            sale_.partly_saved = saving_.left();
            state_.may_have_unfinished = true;
            return outcome;
        }
        after_save();
        return outcome;
    });
}

void Checkout::after_save() {
    const bool opens_drawer = moves_cash(invoice_.payment);
    start_next_invoice();
    if (opens_drawer) OpenDrawer();
}

bool Checkout::settle_unfinished() {
    return change("settle unfinished saves", false, [&] { return settle_all(); });
}

bool Checkout::settle_all() {
    if (!state_.may_have_unfinished) return false;
    bool any = false;
    bool any_left = false;
    bool screen_is_left = false;
    for (const auto& [id, settled, report] :
         UnfinishedSaves(connection_, session_, services_, state_.printer).settle_all()) {
        if (report) state_.shift_reports.push_back(*report);
        any = any || settled != database::Settled::left;
        any_left = any_left || settled == database::Settled::left;
        if (!sale_.partly_saved || sale_.partly_saved->journal_id != id) continue;
        screen_is_left = settled == database::Settled::left;
        if (screen_is_left) continue;
        sale_.partly_saved.reset();
        if (settled == database::Settled::finished) after_save();
    }
    // Another program has settled the save, and only its user knows how.
    if (sale_.partly_saved && !screen_is_left) sale_.partly_saved->journal_id = 0;
    state_.may_have_unfinished = any_left;
    if (any && !sale_.shows_saved_receipt()) NextInvoiceNumber();
    return any;
}

bool Checkout::CancelInvoice() {
    return cancel("cancel the receipt", message::cancel_receipt);
}

bool Checkout::CancelRecord() {
    return cancel("cancel the record", message::cancel_record);
}

bool Checkout::cancel(std::string_view name, std::string_view question) {
    return look_up(name, false, [&] {
        if (!services_.prompts.question(giving_up(question))) return false;
        note_cancelled(session_, sale_);
        give_up();
        start_next_invoice();
        return true;
    });
}

void Checkout::OpenDrawer() {
    open_drawer_on(session_.settings.cash);
}

bool Checkout::open_drawer_by_key() {
    const auto permit = authorise(signin::Action::open_drawer);
    if (!permit) return false;
    session_.note({.kind = audit::Kind::drawer_opened, .approver = permit.approver});
    open_drawer_on(keyboard_drawer_port);
    return true;
}

// Many shops have no drawer at the port, so a missing one is not reported. A port that must never be written
// to is.
void Checkout::open_drawer_on(std::string_view port) {
    const common::PortFault fault =
        sales::OpenDrawer(services_.devices, port, state_.printer.drawer_command(port));
    if (!common::is_never_a_port(fault)) return;
    services_.prompts.message(
        std::string(printing::message::drawer_failed) + printing::message::port_words(fault, port),
        common::Icon::exclamation);
}

}  // namespace sales
