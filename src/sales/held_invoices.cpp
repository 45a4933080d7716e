#include "sales/held_invoices.h"

#include <algorithm>
#include <utility>

#include "common/random.h"
#include "common/text.h"
#include "database/choices.h"
#include "database/till_tables.h"
#include "database/transaction.h"
#include "sales/events.h"
#include "sales/messages.h"
#include "sales/rights.h"
#include "sales/unfinished.h"

namespace sales {

using database::Command;
using database::Result;
using database::Row;
using database::Sql;

namespace {

constexpr std::string_view log_code = "31";

std::string customer_of(const Invoice& invoice) {
    if (invoice.payment == PaymentOption::account) return invoice.customer_name;
    return invoice.walk_in ? invoice.walk_in->name : std::string();
}

HeldInvoice held_in(const Row& row) {
    return {row.integer("id"),         row.moment("moment"),
            row.text("customer"),      common::Amount(row.number("net")),
            row.integer("line_count"), row.integer("cash_no"),
            row.text("user_name"),     row.integer("taken"),
            row.integer("taken_cash"), row.text("taken_user"),
            row.text("content")};
}

std::vector<HeldInvoice> held_in(const Result& rows) {
    std::vector<HeldInvoice> held;
    for (const Row& row : rows)
        held.push_back(held_in(row));
    return held;
}

// "10:42 AM · منى · عدد السطور 2 · الصافي 70.75"; the time reads from left to right.
std::string in_words(const HeldInvoice& held) {
    return "\u200e" + common::twelve_hour_text(held.moment.time) +
           (held.customer.empty() ? "" : " · " + held.customer) + " · " + std::string(message::line_count) +
           std::to_string(held.line_count) + std::string(message::net_of) + held.net.text();
}

void add_goods(const Invoice& invoice, std::int64_t store, std::map<std::int64_t, double>& held) {
    if (invoice.is_return()) return;
    for (const Line& line : invoice.lines)
        if (line.moves_stock() && invoice.source_of(line) == store)
            held[*line.item_code] += line.base_quantity();
}

Sql held_of_store(std::int64_t store) {
    return Sql("select * from till_held where stcode = ") + store;
}

}  // namespace

std::vector<HeldInvoice> held_by_drawer(database::Connection& connection, std::int64_t store,
                                        std::int64_t drawer) {
    std::vector<HeldInvoice> held;
    database::unless_table_is_missing([&] {
        held = held_in(connection.query(held_of_store(store) + " and cash_no = " + drawer +
                                        " and taken is null order by moment desc, id"));
    });
    return held;
}

std::string held_words(database::Connection& connection, const signin::Session& session) {
    constexpr std::size_t most = 5;
    const auto all = held_by_drawer(connection, session.store_code, session.cash_point);
    if (all.empty()) return {};
    std::string words = std::string(message::still_held) + std::to_string(all.size());
    for (std::size_t at = 0; at < std::min(most, all.size()); ++at)
        words += "\n" + in_words(all[at]);
    if (all.size() > most) words += "\n…";
    return words;
}

std::map<std::int64_t, double> goods_held(database::Connection& connection, std::int64_t store) {
    std::map<std::int64_t, double> held;
    database::unless_table_is_missing([&] {
        for (const Row& row : connection.query("select content from till_held")) {
            try {
                add_goods(read_kept_invoice(row.text("content")).invoice, store, held);
            } catch (const std::exception&) {
                // The text of another version: whoever resumes it is told.
            }
        }
    });
    return held;
}

std::vector<HeldInvoice> HeldInvoices::list() {
    return look_up("list the held invoices", std::vector<HeldInvoice>(), [&] {
        std::vector<HeldInvoice> held;
        database::Reads reads;
        reads.add_optional(held_of_store(session_.store_code) + " order by moment desc, id",
                           [&](const Result& rows) { held = held_in(rows); });
        database::ask_drawers(reads, session_.store_code, drawers_);
        reads.run(connection_);
        return held;
    });
}

std::string HeldInvoices::drawer_name(std::int64_t drawer) const {
    const std::string name = common::name_of(drawers_, drawer);
    return name.empty() ? std::to_string(drawer) : name;
}

bool HeldInvoices::hold() {
    return change("hold the invoice", false, [&] {
        if (frozen()) return false;
        const auto refuse = [this](std::string_view why) {
            services_.prompts.message(why, common::Icon::exclamation);
            return false;
        };
        if (invoice_.lines.empty()) return refuse(message::nothing_to_hold);
        if (sale_.is_only_looked_at()) return refuse(message::saved_is_not_held);
        if (!state_.may_hold) return refuse(message::cannot_hold);
        if (is_taken_over()) return false;
        put_aside(kept_invoice(), state_.draft.mark());
        start_next_invoice();
        return true;
    });
}

// A held invoice that was resumed goes back to its row.
void HeldInvoices::put_aside(KeptInvoice kept, DraftMark mark) {
    if (kept.user == session_.user_code) grant_to_others(session_, kept.invoice);
    const std::int64_t resumed = std::exchange(mark.held, 0);  // stays held
    const std::int64_t id = resumed != 0 ? resumed : common::random_id();
    const Invoice& invoice = kept.invoice;
    std::vector<database::Value> values = {session_.store_code,
                                           session_.cash_point,
                                           common::left(kept.user_name, 100),
                                           services_.clock.now(),
                                           common::left(customer_of(invoice), 100),
                                           invoice.net().value(),
                                           static_cast<std::int64_t>(invoice.lines.size()),
                                           text_of(kept),
                                           id};
    std::vector<Command> commands = {Sql("begin transaction")};
    if (resumed == 0) {
        commands.push_back(Command(
            "insert into till_held (stcode,cash_no,user_name,moment,customer,net,line_count,content,id) "
            "values (?,?,?,?,?,?,?,?,?)",
            std::move(values)));
    } else {
        values.emplace_back(mark.file);
        commands.push_back(
            Command("update till_held set stcode = ?, cash_no = ?, user_name = ?, moment = ?, customer = ?, "
                    "net = ?, line_count = ?, content = ?, taken = null, taken_cash = null, "
                    "taken_user = null where id = ? and taken = ?",
                    std::move(values))
                .that_must_change());
    }
    for (Command& command : leaving_the_screen(mark))
        commands.push_back(std::move(command));
    commands.emplace_back(Sql("commit transaction"));
    bool may_be_held = false;
    try {
        connection_.run_all(commands);
        may_be_held = true;
        connection_.make_durable();
    } catch (const database::Error& error) {
        if (may_be_held || database::may_have_run(error)) retake(id);
        throw;
    }
    state_.draft.clear();
    session_.note(event_of(audit::Kind::invoice_held, invoice));
}

// Holding failed, or its answer was lost. The invoice stays on the screen, so its row is taken back if there
// is one. A row from an earlier run is on no screen; the next start gives it back.
void HeldInvoices::retake(std::int64_t id) noexcept {
    try {
        state_.draft.renew();
        const auto changed = connection_.execute(
            "update till_held set taken = ?, taken_cash = ?, taken_user = ? where id = ? and taken is null",
            {state_.draft.mark().file, session_.cash_point, session_.user_name, id});
        if (changed != 0 && !state_.draft.left()) state_.draft.resume(id);
    } catch (const std::exception& error) {
        services_.log.log_event(database::log_line("take the held invoice back", error), log_code);
    }
}

bool HeldInvoices::resume(const HeldInvoice& held) {
    return change("resume an invoice", false, [&] {
        if (frozen()) return false;
        if (held.id == state_.draft.mark().held) {
            services_.prompts.message(message::held_is_here);
            return false;
        }
        KeptInvoice kept = read_kept_invoice(held.content);
        std::optional<signin::Permit> permit;
        if (kept.invoice.is_return()) {
            permit = authorise(signin::Action::return_kind);
            if (!*permit) return false;
        }
        const bool holds_first = sale_.is_in_work();
        if (holds_first &&
            !services_.prompts.question(summary_of(invoice_) + std::string(message::hold_first)))
            return false;
        std::optional<HeldInvoice> taken = take(held.id, state_.draft.mark().file);
        std::string former_place;
        if (!taken) {
            const auto elsewhere = open_elsewhere(held.id);
            if (!elsewhere || !takes_over(*elsewhere)) return false;
            taken = take(held.id, elsewhere->taken);
            if (!taken) return show_who_has(held.id);
            former_place = place_of(*elsewhere);
        }
        connection_.make_durable();
        kept = read_kept_invoice(taken->content);  // another till may have held it again since it was listed
        // What may fail comes first: afterwards the screen must not go back to what was put aside.
        KeptInvoice former = kept_invoice();
        if (permit) permit_return(*permit, kept.invoice);
        show(std::move(kept));
        if (holds_first)
            put_aside(std::move(former), state_.draft.mark());
        else
            give_up();
        state_.draft.resume(held.id);
        audit::Event event = event_of(audit::Kind::invoice_resumed, invoice_);
        if (!former_place.empty()) event.what += std::string(message::was_open_at) + former_place;
        session_.note(event);
        return true;
    });
}

// Marks the row as open here, if nobody has it or only the draft with the mark `former`.
std::optional<HeldInvoice> HeldInvoices::take(std::int64_t id, std::int64_t former) {
    std::optional<HeldInvoice> taken;
    database::in_transaction(connection_, [&] {
        const auto changed = connection_.execute(
            "update till_held set taken = ?, taken_cash = ?, taken_user = ? "
            "where id = ? and (taken is null or taken = ?)",
            {state_.draft.mark().file, session_.cash_point, session_.user_name, id, former});
        if (changed != 0)
            taken = held_in(connection_.query(Sql("select * from till_held where id = ") + id).front());
    });
    return taken;
}

std::optional<HeldInvoice> HeldInvoices::open_elsewhere(std::int64_t id) {
    const Result rows = connection_.query(Sql("select * from till_held where id = ") + id);
    if (!rows.empty()) return held_in(rows.front());
    services_.prompts.message(message::held_is_gone, common::Icon::exclamation);
    return std::nullopt;
}

// The drawer, its user and since when. A till has one held invoice open at a time, the one it resumed last.
std::string HeldInvoices::place_of(const HeldInvoice& held) {
    std::string place = drawer_name(held.taken_drawer) + " · " + held.taken_user;
    database::unless_table_is_missing([&] {
        const Result rows = connection_.query(
            Sql("select max(moment) as since from till_journal where cash_no = ") + held.taken_drawer +
            " and kind = " + database::quoted(audit::name_of(audit::Kind::invoice_resumed).stored));
        if (rows.empty() || rows.front().null("since")) return;
        const common::Moment since = rows.front().moment("since");
        place += std::string(message::since) + common::date_text(since.date) + " " +
                 common::twelve_hour_text(since.time);
    });
    return place;
}

bool HeldInvoices::show_who_has(std::int64_t id) {
    if (const auto held = open_elsewhere(id))
        services_.prompts.message(std::string(message::held_is_elsewhere) + place_of(*held),
                                  common::Icon::exclamation);
    return false;
}

// The other till may be gone for good. If its save of the invoice was cut off, part of it is in the books.
bool HeldInvoices::takes_over(const HeldInvoice& held) {
    for (const database::JournalEntry& entry :
         database::unfinished_saves(connection_, session_.store_code, held.taken_drawer)) {
        if (draft_of(entry).held != held.id) continue;
        services_.prompts.message(std::string(message::held_is_partly_saved) + place_of(held),
                                  common::Icon::exclamation);
        return false;
    }
    return services_.prompts.question(
        std::string(message::held_is_elsewhere) + place_of(held) + std::string(message::take_over),
        common::Icon::critical);
}

bool HeldInvoices::discard(const HeldInvoice& held) {
    return look_up("discard a held invoice", false, [&] {
        const std::string what = in_words(held);
        if (held.id == state_.draft.mark().held) {
            services_.prompts.message(message::held_is_here);
            return false;
        }
        if (!services_.prompts.question(std::string(message::discard_held) + what, common::Icon::exclamation))
            return false;
        if (connection_.execute(Sql("delete from till_held where id = ") + held.id + " and taken is null") ==
            0)
            return show_who_has(held.id);
        connection_.make_durable();
        session_.note({.kind = audit::Kind::invoice_cancelled,
                       .what = std::string(message::of_held) + what,
                       .amount = held.net});
        return true;
    });
}

// A line's goods and prices stay as they were; the day and the number are those of now.
void HeldInvoices::show(KeptInvoice kept) {
    const bool has_day = kept.date_chosen;
    if (!has_day) kept.invoice.date = server_date();
    sale_ = empty_sale();
    invoice_ = std::move(kept.invoice);
    sale_.recalled = std::move(kept.recalled);
    sale_.edited = kept.edited;
    sale_.date_chosen = has_day;
    sale_.offer = kept.offer;
    sale_.chosen_customer = invoice_.customer;
    if (!sale_.shows_saved_receipt()) NextInvoiceNumber();
    show_line(invoice_.lines.empty() ? std::nullopt : std::optional(invoice_.lines.size() - 1));
}

bool HeldInvoices::may_leave(bool restarts) {
    const std::string_view question = restarts ? message::restart : message::exit;
    if (!sale_.is_in_work())
        return (restarts && !sale_.partly_saved) ||
               services_.prompts.question(question, common::Icon::critical);
    std::string_view what = message::lost_at_leaving;
    if (state_.draft.is_open()) what = message::kept_at_leaving;
    if (state_.may_hold && !restarts) what = message::held_at_leaving;
    return services_.prompts.question(std::string(message::not_saved_yet) + summary_of(invoice_) +
                                          std::string(what) + std::string(question),
                                      common::Icon::critical);
}

void HeldInvoices::leave(bool restarts) {
    if (sale_.partly_saved) return;
    try {
        if (invoice_.lines.empty() && state_.draft.mark().held != 0) {
            give_up();
        } else if (sale_.is_in_work() && state_.may_hold && !restarts) {
            put_aside(kept_invoice(), state_.draft.mark());
            sale_ = empty_sale();
        }
    } catch (const std::exception& error) {
        services_.log.log_event(database::log_line("hold the invoice at leaving", error), log_code);
    }
}

}  // namespace sales
