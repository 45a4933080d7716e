#include "cash/cash_position.h"

#include <algorithm>

#include "cash/messages.h"
#include "cash/shift.h"
#include "database/till_settings.h"

namespace cash {

using common::Amount;
using database::quoted;
using database::Reads;
using database::Result;
using database::Sql;

namespace {

// The screens receive the figures of a period in single precision.
Amount in_single_precision(Amount amount) {
    return Amount(static_cast<double>(static_cast<float>(amount.value())));
}

// What is transferred: a drawer's position at a moment, less what stays in the drawer.
struct Removal {
    Drawer drawer;
    std::string drawer_name;
    Amount position;
    Amount leave;
    std::string until;           // the moment of the position
    std::optional<Amount> held;  // the cash now, if `leave` must stay of that
};

// The main drawer of the main store, where cash is collected.
void ask_main_drawer(Reads& reads, std::optional<Drawer>& main) {
    reads.add("select * from basic", [&main](const Result& settings) {
        if (!settings.empty())
            main = Drawer{settings.front().integer("mst"), settings.front().integer("mcash")};
    });
}

// The transfers out of a drawer at or after the moment of its position, which does not include them: a
// transfer carries the time of its writing. Without them two shift changes would transfer the same cash
// twice.
void ask_moved_since(Reads& reads, const Removal& removal, Amount& moved) {
    ask_sums(reads, left_drawer, removal.drawer,
             {removal.until, common::moment_text({common::no_expiry, {}}), {}},
             [&moved](const std::vector<Sum>& sums) { moved = -total_of(sums); });
}

// The amount to transfer. Nothing from the main drawer itself, from a position of zero or less, or from a
// drawer that holds no more than what stays in it.
Amount removable(const std::optional<Drawer>& main, const Removal& removal, Amount moved) {
    if (!main || removal.drawer == *main || removal.position <= Amount()) return {};
    const Amount left = removal.position - moved;
    return std::max(Amount(), std::min(left, removal.held.value_or(left)) - removal.leave);
}

std::vector<Amount> removable(database::Connection& connection, const std::optional<Drawer>& main,
                              const std::vector<Removal>& removals) {
    std::vector<Amount> amounts(removals.size());
    Reads reads;
    for (std::size_t i = 0; i < removals.size(); ++i)
        ask_moved_since(reads, removals[i], amounts[i]);
    reads.run(connection);
    for (std::size_t i = 0; i < removals.size(); ++i)
        amounts[i] = removable(main, removals[i], amounts[i]);
    return amounts;
}

// The transfer of an amount, dated at the moment it is made; nothing if there is nothing to transfer.
std::optional<CashTransfer> transfer_of(const signin::Session& session, common::Clock& clock,
                                        const std::optional<Drawer>& main, const Removal& removal,
                                        Amount amount) {
    if (amount.is_zero()) return std::nullopt;
    return CashTransfer{
        removal.drawer,    *main,      amount, std::string(message::transfer_from) + removal.drawer_name,
        session.user_code, clock.now()};
}

// The moment up to which a copy counts. The copy of shiftc takes the shift that started last in any store,
// without the seconds.
void ask_calc_moment(Reads& reads, std::int64_t store, CalcCopy copy, std::string& moment) {
    const auto take = [&moment, copy](const Result& shifts) {
        if (shifts.empty()) return;
        moment = common::moment_text(shifts.rows().back().moment("s_date"));
        if (copy == CalcCopy::shift_start) moment.resize(moment.size() - 3);
    };
    if (copy == CalcCopy::shift_start)
        reads.add("select * from shift Order By s_date", take);
    else
        reads.add(Sql("select * FROM shift  where stcode = ") + store + " Order By scode", take);
}

// The drawers of a store, without their positions.
void ask_drawers(Reads& reads, std::int64_t store, std::vector<DrawerPosition>& drawers) {
    reads.add(Sql("select * from cash where stcode = ") + store, [&drawers](const Result& rows) {
        for (const auto& row : rows) {
            DrawerPosition& drawer = drawers.emplace_back();
            drawer.drawer = row.integer("code");
            drawer.name = row.text("Name");
        }
    });
}

void ask_total(Reads& reads, const Procedure& procedure, const Drawer& drawer, const Window& window,
               Amount& total) {
    ask_sums(reads, procedure, drawer, window,
             [&total](const std::vector<Sum>& sums) { total = total_of(sums); });
}

void ask_period_figures(Reads& reads, const Drawer& drawer, const Window& period, DrawerPosition& computed) {
    ask_sums(reads, shift_period, drawer, period, [&computed](const std::vector<Sum>& sums) {
        Amount card_sales;
        for (const Sum& sum : sums) {
            if (sum.term->movement == Movement::card_sales) card_sales += sum.amount;
            if (sum.term->movement == Movement::card_returns) card_sales -= sum.amount;
            if (sum.term->movement == Movement::uncollected)
                computed.uncollected = in_single_precision(sum.amount);
        }
        computed.card_sales = in_single_precision(card_sales);
    });
}

const Procedure& calc_of(CalcCopy copy) {
    return copy == CalcCopy::shift_start ? calc_of_shift_start : calc_of_shift_close;
}

// The drawers other than the session's own that would be emptied, each with its amount and whether it is in a
// shift; "" if there are none.
std::string others_to_empty(database::Connection& connection, const signin::Session& session,
                            const std::vector<Removal>& removals, const std::vector<Amount>& amounts) {
    std::string lines;
    Reads reads;
    for (std::size_t i = 0; i < removals.size(); ++i) {
        const Removal& removal = removals[i];
        if (removal.drawer.code == session.cash_point || amounts[i].is_zero()) continue;
        reads.add(last_shift_statement(removal.drawer.store, removal.drawer.code),
                  [&lines, &removal, amount = amounts[i]](const Result& rows) {
                      const auto shift = last_shift_in(rows);
                      lines += removal.drawer_name + " : " + amount.text();
                      if (shift && shift->is_open()) lines += message::in_its_shift;
                      lines += "\n";
                  });
    }
    reads.run(connection);
    return lines;
}

}  // namespace

void ask_discounts(Reads& reads, const Drawer& drawer, const common::Moment& start,
                   const common::Moment& until, const std::optional<common::Date>& net_from,
                   InvoiceDiscounts& discounts) {
    const auto ask_since = [&](const common::Date& day, auto take) {
        ask_sums(reads, discount_period, drawer,
                 {common::moment_text(start), common::moment_text(until), day},
                 [take](const std::vector<Sum>& sums) { take(-total_of(sums)); });
    };
    const bool begins_before = !net_from || start.date < *net_from;
    if (begins_before) ask_since(start.date, [&discounts](Amount amount) { discounts.beside = amount; });
    if (!net_from) return;
    ask_since(std::max(start.date, *net_from), [&discounts, begins_before](Amount amount) {
        discounts.taken_off = amount;
        if (begins_before) discounts.beside -= amount;
    });
}

void CashPosition::compute(std::int64_t store, const common::Moment& start,
                           const common::Moment& until_moment, const common::Moment& end_of_period) {
    drawers_.clear();
    own_ = {};
    store_ = store;
    until_ = until_moment;
    std::optional<common::Date> net_from;
    Reads reads;
    database::ask_net_from(reads, net_from);
    ask_drawers(reads, store, drawers_);
    reads.run(connection_);
    const Window period{common::moment_text(start), common::moment_text(end_of_period), net_from};
    for (DrawerPosition& computed : drawers_) {
        const Drawer drawer{store, computed.drawer};
        ask_total(reads, store_wide, drawer, until(until_moment, net_from), computed.position);
        ask_period_figures(reads, drawer, period, computed);
        ask_discounts(reads, drawer, start, until_moment, net_from, computed.discounts);
    }
    reads.run(connection_);
    if (store != session_.store_code) return;
    for (const DrawerPosition& computed : drawers_)
        if (computed.drawer == session_.cash_point) own_ = computed;
}

std::optional<CashTransfer> CashPosition::transfer_from(std::int64_t drawer, Amount leave) const {
    for (const DrawerPosition& computed : drawers_) {
        if (computed.drawer != drawer) continue;
        const Removal removal{{store_, drawer},
                              computed.name,
                              computed.position,
                              in_single_precision(leave),
                              common::moment_text(until_),
                              {}};
        std::optional<Drawer> main;
        Amount moved;
        Reads reads;
        ask_main_drawer(reads, main);
        ask_moved_since(reads, removal, moved);
        reads.run(connection_);
        return transfer_of(session_, clock_, main, removal, removable(main, removal, moved));
    }
    return std::nullopt;
}

void CashPosition::move(Amount leave, std::int64_t drawer) {
    for (DrawerPosition& computed : drawers_) {
        if (drawer != 0 && drawer != computed.drawer) continue;
        const auto transfer = transfer_from(computed.drawer, leave);
        if (transfer) write_transfer(connection_, *transfer);
        computed.moved = transfer ? transfer->amount : Amount();
        if (store_ == session_.store_code && computed.drawer == session_.cash_point) own_ = computed;
    }
}

std::int64_t write_transfer(database::Connection& connection, const CashTransfer& transfer) {
    const std::int64_t number =
        database::integer_of(connection.scalar(" select max(cnum) as last_i from cach_t ")) + 1;
    connection.execute(
        Sql("Insert Into cach_t (cnum,cdate,caml,cfr,cto,note1,cash_nf,cash_nt,user_c,time_) select ") +
        number + "," + quoted(transfer.at.date) + "," + transfer.amount + "," + transfer.from.store + "," +
        transfer.to.store + "," + quoted(transfer.note) + "," + transfer.from.code + "," + transfer.to.code +
        "," + transfer.user + "," + quoted(transfer.at.time));
    return number;
}

void remove_transfer(database::Connection& connection, std::int64_t number, const CashTransfer& transfer) {
    connection.execute(Sql("delete from cach_t where cnum = ") + number +
                       " and cfr = " + transfer.from.store + " and cash_nf = " + transfer.from.code +
                       " and caml = " + transfer.amount + " and cdate = " + quoted(transfer.at.date));
}

Amount position_at(database::Connection& connection, const Drawer& drawer, const common::Moment& until) {
    return total_of(
        read_sums(connection, store_wide, drawer, cash::until(until, database::net_from(connection))));
}

void ask_calc_position(Reads& reads, CalcCopy copy, const Drawer& drawer, const common::Moment& until,
                       const std::optional<common::Date>& net_from, Amount& position) {
    ask_total(reads, calc_of(copy), drawer, cash::until(until, net_from), position);
}

std::vector<DrawerPosition> calc_cash(database::Connection& connection, const signin::Session& session,
                                      const common::Services& services, CalcCopy copy, Amount leave) {
    const Drawer own{session.store_code, session.cash_point};
    std::string moment;
    std::optional<common::Date> net_from;
    std::vector<DrawerPosition> computed;
    std::optional<Drawer> main;
    Reads reads;
    ask_calc_moment(reads, own.store, copy, moment);
    database::ask_net_from(reads, net_from);
    ask_drawers(reads, own.store, computed);
    ask_main_drawer(reads, main);
    reads.run(connection);
    if (moment.empty()) return {};

    Amount held;
    for (DrawerPosition& drawer : computed)
        ask_total(reads, calc_of(copy), {own.store, drawer.drawer}, {"", moment, net_from}, drawer.position);
    if (!leave.is_zero())
        ask_calc_position(reads, copy, own, common::next_second(services.clock.now()), net_from, held);
    reads.run(connection);
    std::vector<Removal> removals;
    for (const DrawerPosition& drawer : computed) {
        if (drawer.position <= Amount()) {
            services.prompts.message(std::string(message::started_with) + drawer.position.text() +
                                     std::string(message::nothing_moved));
        }
        Removal removal{{own.store, drawer.drawer}, drawer.name, drawer.position, {}, moment, {}};
        if (removal.drawer == own && !leave.is_zero()) {
            // The moment may be long past, because the newest shift is often that of another drawer.
            removal.leave = leave;
            removal.held = held;
        }
        removals.push_back(std::move(removal));
    }
    std::vector<Amount> amounts = removable(connection, main, removals);
    const std::string others = others_to_empty(connection, session, removals, amounts);
    bool may_empty_others = true;
    if (!others.empty()) {
        connection.make_durable();  // the shift has begun, whatever the answer and however long it takes
        // The default is No, because a colleague may still work on one of them.
        may_empty_others = services.prompts.question(
            std::string(message::others_emptied) + others + std::string(message::others_question),
            common::Icon::exclamation);
        amounts = removable(connection, main, removals);
    }
    for (std::size_t i = 0; i < removals.size(); ++i) {
        if (!may_empty_others && removals[i].drawer.code != session.cash_point) continue;
        const auto transfer = transfer_of(session, services.clock, main, removals[i], amounts[i]);
        if (!transfer) continue;
        write_transfer(connection, *transfer);
        computed[i].moved = transfer->amount;
    }
    return computed;
}

}  // namespace cash
