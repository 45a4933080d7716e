#include "sales/sales_screen.h"

#include <fmt/format.h>

#include "common/numbers.h"
#include "database/error_words.h"
#include "sales/display.h"
#include "sales/invoice_key.h"
#include "sales/messages.h"
#include "sales/pricing.h"
#include "sales/sales_screen_guard.h"

namespace sales {

using signin::Action;

namespace {

// The log's code of lines about the sales screen.
constexpr std::string_view log_code = "31";

std::string twelve_hours_with_seconds(const common::TimeOfDay& time) {
    const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return fmt::format("{:02}:{:02}:{:02} {}", hour, time.minute, time.second, time.hour < 12 ? "AM" : "PM");
}

}  // namespace

SalesScreen::SalesScreen(database::Connection& connection, signin::Session& session,
                         common::Services services, printing::ReceiptPrinter& printer)
    : connection_(connection),
      session_(session),
      services_(services),
      printer_(printer),
      saving_(connection, session, services, printer) {}

void SalesScreen::report(std::string_view name, const std::exception& error) {
    const auto* failed = dynamic_cast<const database::Error*>(&error);
    std::string line = std::string(name) + ": " + error.what();
    if (failed != nullptr && !failed->statement().empty()) line += " [" + failed->statement() + "]";
    services_.log.log_event(line, log_code);
    const bool lost = failed != nullptr && failed->is_connection_lost();
    services_.prompts.message(
        lost ? message::connection_lost : database::words_for(error).value_or(message::action_failed),
        common::Icon::critical);
}

bool SalesScreen::authorise(signin::Action action) {
    return signin::authorise(session_, services_.prompts, action);
}

// A server's own day counts, not the workstation's; an embedded shop's server is this workstation.
common::Date SalesScreen::server_date() {
    if (connection_.is_embedded()) return services_.clock.now().date;
    return database::moment_of(connection_.scalar("select getdate()")).date;
}

bool SalesScreen::Open() {
    return guarded("open the sales screen", false, [&] {
        // The tables that invoices go to are opened without reading a row: one that is missing is told now,
        // not at the first sale.
        for (const char* table : {"sales", "saledata", "inv_d"})
            connection_.describe(table);
        lists_ = load_lists(connection_);
        clock_text_ = common::twelve_hour_text(services_.clock.now().time);
        chosen_store_ = session_.store_code;
        reset_invoice();
        invoice_.date = server_date();
        ticked_day_ = services_.clock.now().date;
        draw_number();
        sale_period_ = load_sale_period(connection_, invoice_.date);
        lists_.user_filter = load_user_filter(connection_);
        shifts_ = load_shifts(connection_, session_);
        news_ = load_news(connection_);
        const auto basic = connection_.query("select * from basic");
        invoice_.price_level = default_level(basic.empty() ? 0 : basic.front().integer("main_p"));
        return true;
    });
}

std::int64_t SalesScreen::shift_number() const {
    return shifts_.empty() || !shifts_.back().end.empty() ? 0 : shifts_.back().number;
}

void SalesScreen::tick() {
    const common::Moment now = services_.clock.now();
    clock_text_ = twelve_hours_with_seconds(now.time);
    if (now.date != ticked_day_ && !busy_ && !shows_saved_receipt() && !partly_saved_) take_day(now.date);
    ticked_day_ = now.date;
}

// Date and time of an invoice are of one moment, that of its saving: begun before midnight or on a till left
// on overnight, it would otherwise carry the time of the one day under the date of the other, and count a day
// too early.
void SalesScreen::take_day(const common::Date& today) {
    if (!date_chosen_) invoice_.date = today;
}

// A till that is left on meets sale periods that begin or end meanwhile: each invoice looks once, before its
// first line is priced. The day is the server's, as when the screen opens, and not a date chosen for the
// invoice.
void SalesScreen::look_for_sale_period() {
    if (period_looked_for_) return;
    const common::Date today = server_date();
    if (sale_period_of(connection_, today) != sale_period_)
        sale_period_ = load_sale_period(connection_, today);
    period_looked_for_ = true;
}

// --- header ------------------------------------------------------------------------------------------------

void SalesScreen::choose_store(std::int64_t code) {
    guarded("choose the store", false, [&] {
        if (frozen()) return false;
        chosen_store_ = code;
        invoice_.store = code;
        // What was to come from the store that now sells needs no transfer any more.
        for (Line& line : invoice_.lines)
            if (line.source_kind == SourceKind::other_store && line.source_store == code)
                line.source_kind = SourceKind::selling_store;
        draw_number();
        refresh_stock();
        return true;
    });
}

bool SalesScreen::choose_date(const common::Date& date) {
    if (!common::is_valid(date)) return false;
    invoice_.date = date;
    date_chosen_ = true;
    return true;
}

bool SalesScreen::choose_customer(std::int64_t code) {
    if (!contains(lists_.account_customers, code)) return false;
    chosen_customer_ = code;
    if (invoice_.payment == PaymentOption::account) {
        invoice_.customer = code;
        invoice_.customer_name = common::name_of(lists_.account_customers, code);
    }
    return true;
}

bool SalesScreen::choose_tips_receiver(std::int64_t code) {
    if (!contains(lists_.tips_receivers, code)) return false;
    invoice_.tips_receiver = code;
    return true;
}

bool SalesScreen::choose_bank(std::int64_t code) {
    if (!contains(lists_.banks, code)) return false;
    invoice_.card.bank_code = code;
    return true;
}

void SalesScreen::enter_card(std::string_view holder, std::string_view reference) {
    invoice_.card.holder = holder;
    invoice_.card.reference = reference;
}

bool SalesScreen::choose_worker(std::int64_t code) {
    if (code != 0 && !contains(lists_.workers, code)) return false;
    invoice_.worker = code;
    invoice_.worker_name = common::name_of(lists_.workers, code);
    return true;
}

void SalesScreen::enter_permit(bool opened, std::string_view number) {
    invoice_.permit_opened = opened;
    invoice_.permit_number = number;
}

void SalesScreen::reload_customers() {
    guarded("reload the customers", false, [&] {
        reload_parties(connection_, lists_);
        return true;
    });
}

void SalesScreen::reload_shifts() {
    guarded("reload the shifts", false, [&] {
        shifts_ = load_shifts(connection_, session_);
        return true;
    });
}

// --- kind, payment, price level, number --------------------------------------------------------------------

bool SalesScreen::SwitchKind(KindOption kind) {
    return guarded("switch the kind", false, [&] {
        if (frozen()) return false;
        const bool crosses = (kind == KindOption::sale) != (invoice_.kind == KindOption::sale);
        if (crosses && !invoice_.lines.empty()) {
            services_.prompts.message(message::kind_fixed, common::Icon::exclamation);
            return false;
        }
        if (kind != KindOption::sale && !authorise(Action::return_kind)) {
            if (invoice_.lines.empty()) apply_kind(KindOption::sale);
            return false;
        }
        apply_kind(kind);
        return true;
    });
}

void SalesScreen::apply_kind(KindOption kind) {
    invoice_.kind = kind;
    apply_payment(payment_after_switch(invoice_.payment, kind));
}

bool SalesScreen::SwitchPayment(PaymentOption payment) {
    return guarded("switch the payment", false, [&] {
        if (frozen() || !sales::payment_enabled(payment, invoice_.kind)) return false;
        apply_payment(payment);
        return true;
    });
}

void SalesScreen::apply_payment(PaymentOption payment) {
    invoice_.payment = payment;
    const bool on_account = payment == PaymentOption::account;
    invoice_.customer = on_account ? chosen_customer_ : walk_in_customer;
    invoice_.customer_name =
        on_account ? common::name_of(lists_.account_customers, chosen_customer_) : std::string();
    if (payment == PaymentOption::card && invoice_.card.bank_code == 0 && !lists_.banks.empty())
        invoice_.card.bank_code = lists_.banks.front().code;
    draw_number();
    RecalcTotals();
}

// F4 knows two kinds; from the third one it goes back to the sale, as from a return.
bool SalesScreen::toggle_kind() {
    return SwitchKind(invoice_.kind == KindOption::sale ? KindOption::return_ : KindOption::sale);
}

// F5 goes to account from cash alone; from account, card and tips it goes to cash.
bool SalesScreen::toggle_payment() {
    return SwitchPayment(invoice_.payment == PaymentOption::cash ? PaymentOption::account
                                                                 : PaymentOption::cash);
}

void SalesScreen::choose_price_level(int level) {
    if (level >= retail_level && level <= last_level) invoice_.price_level = level;
}

void SalesScreen::NextInvoiceNumber() {
    guarded("draw the invoice number", false, [&] {
        draw_number();
        return true;
    });
}

void SalesScreen::draw_number() {
    invoice_.number = next_invoice_number(connection_, invoice_);
}

// --- totals, display and drawer
// ------------------------------------------------------------------------------

void SalesScreen::RecalcTotals() {
    figures_.total = common::format_amount(invoice_.total());
    figures_.discount_value = common::format_amount(invoice_.discount());
    figures_.discount_percent = common::format_amount(invoice_.discount_percent);
    figures_.net = common::format_amount(invoice_.net());
}

void SalesScreen::ShowOnDisplay(std::string_view text) {
    display_text_ = text;
    show_on_display(services_.devices, text);
}

void SalesScreen::OpenDrawer() {
    kick_drawer(services_.devices, session_.settings.cash);
}

bool SalesScreen::open_drawer_by_key() {
    if (!authorise(Action::open_drawer)) return false;
    kick_drawer(services_.devices, keyboard_drawer_port);
    return true;
}

}  // namespace sales
