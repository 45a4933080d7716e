#include "sales/sale.h"

#include "common/numbers.h"
#include "database/error.h"
#include "sales/events.h"
#include "sales/invoice_key.h"
#include "sales/items.h"
#include "sales/messages.h"
#include "sales/sale_period.h"

namespace sales {

namespace {

// The log's code of lines about the sales desk.
constexpr std::string_view log_code = "31";

}  // namespace

std::string_view why_frozen(const PartlySaved& partly) {
    return partly.journal_id != 0 ? message::partly_can_be_settled : message::partly_stays;
}

std::string summary_of(const Invoice& invoice) {
    return std::string(message::line_count) + std::to_string(invoice.lines.size()) +
           std::string(message::net_of) + invoice.net().text();
}

void DeskPart::report(std::string_view name, const std::exception& error) {
    services_.log.log_event(database::log_line(name, error), log_code);
    services_.prompts.message(database::with_reason(message::action_failed, error), common::Icon::critical);
}

common::Date DeskPart::server_date() {
    common::Date day;
    database::Reads reads;
    ask_day(reads, day);
    reads.run(connection_);
    return day;
}

void DeskPart::ask_day(database::Reads& reads, common::Date& day) {
    day = services_.clock.now().date;
    if (connection_.is_embedded()) return;
    reads.add("select getdate()", [&day](const database::Result& rows) {
        day = database::moment_of(database::first_cell(rows)).date;
    });
}

void DeskPart::ask_today(database::Reads& reads, Today& today) {
    ask_day(reads, today.day);
    today.assumed = today.day;
    reads.add(sale_period_statement(today.assumed),
              [&today](const database::Result& periods) { today.period = sale_period_in(periods); });
}

std::optional<std::int64_t> DeskPart::checked_period(const Today& today) {
    if (today.day == today.assumed) return today.period;
    return sale_period_in(connection_.query(sale_period_statement(today.day)));
}

void DeskPart::take_day(const common::Date& today) {
    if (!sale_.date_chosen) invoice_.date = today;
}

void DeskPart::NextInvoiceNumber() {
    invoice_.number = next_invoice_number(connection_.query(last_number(invoice_)));
}

void DeskPart::ask_invoice_number(database::Reads& reads) {
    reads.add(last_number(invoice_),
              [this](const database::Result& last) { invoice_.number = next_invoice_number(last); });
}

void DeskPart::RecalcTotals() {
    sale_.figures.total = invoice_.total().text();
    sale_.figures.discount_value = invoice_.discount().text();
    sale_.figures.discount_percent = common::format_amount(invoice_.discount_percent);
    sale_.figures.net = invoice_.net().text();
}

void DeskPart::show_line(std::optional<std::size_t> row) {
    sale_.current_row = row;
    RecalcTotals();
    sale_.stock = stock_of(row);
}

void DeskPart::show_line(std::size_t row, StockShown stock) {
    sale_.current_row = row;
    RecalcTotals();
    sale_.stock = std::move(stock);
}

// A general item has no stock.
StockShown DeskPart::stock_of(std::optional<std::size_t> row) {
    if (!row || *row >= invoice_.lines.size()) return {};
    const auto item = invoice_.lines[*row].item_code;
    if (!item) return {};
    return load_stock_shown(connection_, *item, invoice_.store);
}

void DeskPart::ask_default_level(database::Reads& reads) {
    reads.add("select * from basic", [this](const database::Result& basic) {
        invoice_.price_level = default_level(basic.empty() ? 0 : basic.front().integer("main_p"));
    });
}

Sale DeskPart::empty_sale() const {
    Sale empty;
    empty.chosen_store = sale_.chosen_store;
    empty.invoice.store = sale_.chosen_store;
    empty.invoice.price_level = invoice_.price_level;
    empty.invoice.date = services_.clock.now().date;
    return empty;
}

void DeskPart::start_next_invoice() {
    sale_ = empty_sale();
    state_.draft.clear();
    const Sale empty = sale_;
    try {
        database::Reads reads;
        ask_default_level(reads);
        ask_day(reads, invoice_.date);
        ask_invoice_number(reads);
        reads.run(connection_);
    } catch (const std::exception& error) {
        sale_ = empty;
        report("start the next invoice", error);
    }
}

bool DeskPart::frozen() {
    if (!sale_.partly_saved) return false;
    services_.prompts.message(why_frozen(*sale_.partly_saved), common::Icon::critical);
    return true;
}

bool DeskPart::is_taken_over() {
    const DraftMark& mark = state_.draft.mark();
    if (mark.held == 0) return false;
    const database::Result rows =
        connection_.query(database::Sql("select taken, taken_user from till_held where id = ") + mark.held);
    if (!rows.empty() && rows.front().integer("taken") == mark.file) return false;
    services_.prompts.message(std::string(message::held_was_taken_over) +
                                  (rows.empty() ? std::string() : rows.front().text("taken_user")) +
                                  std::string(message::leave_it_there),
                              common::Icon::critical);
    return true;
}

bool DeskPart::may_replace_invoice() {
    if (frozen()) return false;
    if (sale_.is_in_work() && !services_.prompts.question(giving_up(message::cancel_receipt))) return false;
    note_cancelled(session_, sale_);
    give_up();
    return true;
}

std::string DeskPart::giving_up(std::string_view question) const {
    const auto with = [question](std::string_view what) {
        return std::string(question) + "\n" + std::string(what);
    };
    if (sale_.partly_saved) return with(message::partly_saved_is_kept);
    if (sale_.is_only_looked_at()) return with(message::saved_receipt_stays);
    if (invoice_.lines.empty()) return with(message::nothing_on_screen);
    return with(
        summary_of(invoice_) + "\n" +
        std::string(state_.draft.mark().held != 0 ? message::held_is_removed : message::lines_are_lost));
}

void DeskPart::give_up() {
    if (const std::int64_t held = state_.draft.mark().held; held != 0) {
        connection_.execute(database::Sql("delete from till_held where id = ") + held +
                            " and taken = " + state_.draft.mark().file);
        connection_.make_durable();
    }
    state_.draft.clear();
}

void DeskPart::keep_draft() noexcept {
    try {
        Draft& draft = state_.draft;
        if (sale_.partly_saved || draft.left()) return;
        // A held invoice whose lines were all deleted may yet get others.
        if (sale_.is_in_work() || draft.mark().held != 0)
            draft.keep(kept_invoice());
        else
            draft.clear();
    } catch (const std::exception& error) {
        services_.log.log_event(database::log_line("keep the draft", error), log_code);
    }
}

KeptInvoice DeskPart::kept_invoice() const {
    return {invoice_,    sale_.recalled,     sale_.edited,       sale_.date_chosen,
            sale_.offer, session_.user_code, session_.user_name, services_.clock.now()};
}

bool DeskPart::lines_complete() {
    for (std::size_t row = 0; row < invoice_.lines.size(); ++row) {
        const Line& line = invoice_.lines[row];
        const bool no_quantity = line.quantity <= 0;
        if (!no_quantity && line.price > 0) continue;
        const std::string_view what = no_quantity ? message::enter_quantity_of : message::enter_price_of;
        services_.prompts.message(std::string(what) + line.name);
        sale_.current_row = row;
        return false;
    }
    return true;
}

}  // namespace sales
