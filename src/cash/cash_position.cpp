#include "cash/cash_position.h"

#include <algorithm>

#include "cash/messages.h"
#include "cash/shift.h"
#include "database/till_settings.h"

namespace cash {

using common::Amount;
using database::quoted;
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
    std::optional<Amount> held;  // now, where `leave` is to stay whatever the drawer held at that moment
};

// What has left a drawer at or after the moment of its position, which does not see those transfers: each is
// stamped with the time of writing, and two shift changes would otherwise transfer the same cash twice.
Amount moved_since(database::Connection& connection, const Removal& removal) {
    return -total_of(read_sums(connection, left_drawer, removal.drawer,
                               {removal.until, common::moment_text({common::no_expiry, {}}), {}}));
}

// The main drawer of the main store, where cash is collected.
std::optional<Drawer> main_drawer(database::Connection& connection) {
    const auto settings = connection.query("select * from basic");
    if (settings.empty()) return std::nullopt;
    return Drawer{settings.front().integer("mst"), settings.front().integer("mcash")};
}

// What there is to transfer: nothing from the main drawer itself, from a position of zero or less, or if the
// drawer holds no more than what stays in it.
Amount removable(database::Connection& connection, const std::optional<Drawer>& main,
                 const Removal& removal) {
    if (!main || removal.drawer == *main || removal.position <= Amount()) return {};
    const Amount left = removal.position - moved_since(connection, removal);
    return std::max(Amount(), std::min(left, removal.held.value_or(left)) - removal.leave);
}

// The transfer of a removal, dated at the moment it is made; nothing if there is nothing to transfer.
std::optional<CashTransfer> transfer_of(database::Connection& connection, const signin::Session& session,
                                        common::Clock& clock, const Removal& removal) {
    const auto main = main_drawer(connection);
    const Amount amount = removable(connection, main, removal);
    if (amount.is_zero()) return std::nullopt;
    return CashTransfer{
        removal.drawer,    *main,      amount, std::string(message::transfer_from) + removal.drawer_name,
        session.user_code, clock.now()};
}

// The moment up to which a copy counts. The copy of shiftc takes the shift that started last in any store and
// drops the seconds.
std::string calc_moment(database::Connection& connection, std::int64_t store, CalcCopy copy) {
    const auto shifts =
        copy == CalcCopy::shift_start
            ? connection.query("select * from shift Order By s_date")
            : connection.query(Sql("select * FROM shift  where stcode = ") + store + " Order By scode");
    if (shifts.empty()) return "";
    const std::string text = common::moment_text(shifts.rows().back().moment("s_date"));
    return copy == CalcCopy::shift_start ? text.substr(0, text.size() - 3) : text;
}

database::Result drawers_of(database::Connection& connection, std::int64_t store) {
    return connection.query(Sql("select * from cash where stcode = ") + store);
}

DrawerPosition position_of(database::Connection& connection, const Procedure& procedure, std::int64_t store,
                           const database::Row& drawer, const Window& window) {
    DrawerPosition computed;
    computed.drawer = drawer.integer("code");
    computed.name = drawer.text("Name");
    computed.position = total_of(read_sums(connection, procedure, {store, computed.drawer}, window));
    return computed;
}

InvoiceDiscounts discounts_of(database::Connection& connection, const Drawer& drawer,
                              const common::Moment& start, const common::Moment& until,
                              const std::optional<common::Date>& net_from) {
    const auto since = [&](const common::Date& day) {
        return -total_of(read_sums(connection, discount_period, drawer,
                                   {common::moment_text(start), common::moment_text(until), day}));
    };
    InvoiceDiscounts found;
    if (!net_from || start.date < *net_from) found.beside = since(start.date);
    if (net_from) {
        found.taken_off = since(std::max(start.date, *net_from));
        if (start.date < *net_from) found.beside -= *found.taken_off;
    }
    return found;
}

const Procedure& calc_of(CalcCopy copy) {
    return copy == CalcCopy::shift_start ? calc_of_shift_start : calc_of_shift_close;
}

// Names the drawers other than the session's own that would be emptied, each with its amount and whether it
// is in a shift, and asks. True also if there are none.
bool may_empty_others(database::Connection& connection, const signin::Session& session,
                      common::Prompts& prompts, const std::vector<Removal>& removals) {
    const auto main = main_drawer(connection);
    std::string question;
    for (const Removal& removal : removals) {
        if (removal.drawer.code == session.cash_point) continue;
        const Amount amount = removable(connection, main, removal);
        if (amount.is_zero()) continue;
        const auto shift = current_shift(connection, removal.drawer.store, removal.drawer.code);
        question += removal.drawer_name + " : " + amount.text();
        if (shift && shift->is_open()) question += message::in_its_shift;
        question += "\n";
    }
    if (question.empty()) return true;
    connection.make_durable();  // the shift has begun, whatever the answer and however long it takes
    return prompts.question(std::string(message::others_emptied) + question +
                            std::string(message::others_question));
}

}  // namespace

InvoiceDiscounts invoice_discounts(database::Connection& connection, const Drawer& drawer,
                                   const common::Moment& start, const common::Moment& until) {
    return discounts_of(connection, drawer, start, until, database::net_from(connection));
}

void CashPosition::compute(std::int64_t store, const common::Moment& start,
                           const common::Moment& until_moment, const common::Moment& end_of_period) {
    drawers_.clear();
    own_ = {};
    store_ = store;
    until_ = until_moment;
    const auto net_from = database::net_from(connection_);
    const Window period{common::moment_text(start), common::moment_text(end_of_period), net_from};
    const Window window = until(until_moment, net_from);
    for (const auto& row : drawers_of(connection_, store)) {
        DrawerPosition computed = position_of(connection_, store_wide, store, row, window);
        const Drawer drawer{store, computed.drawer};
        Amount card_sales;
        for (const Sum& sum : read_sums(connection_, shift_period, drawer, period)) {
            if (sum.term->movement == Movement::card_sales) card_sales += sum.amount;
            if (sum.term->movement == Movement::card_returns) card_sales -= sum.amount;
            if (sum.term->movement == Movement::uncollected)
                computed.uncollected = in_single_precision(sum.amount);
        }
        computed.card_sales = in_single_precision(card_sales);
        computed.discounts = discounts_of(connection_, drawer, start, until_moment, net_from);
        if (store == session_.store_code && drawer.code == session_.cash_point) own_ = computed;
        drawers_.push_back(std::move(computed));
    }
}

std::optional<CashTransfer> CashPosition::transfer_from(std::int64_t drawer, Amount leave) const {
    for (const DrawerPosition& computed : drawers_) {
        if (computed.drawer != drawer) continue;
        return transfer_of(connection_, session_, clock_,
                           {{store_, drawer},
                            computed.name,
                            computed.position,
                            in_single_precision(leave),
                            common::moment_text(until_),
                            {}});
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

Amount calc_position(database::Connection& connection, CalcCopy copy, const Drawer& drawer,
                     const common::Moment& until) {
    return total_of(
        read_sums(connection, calc_of(copy), drawer, cash::until(until, database::net_from(connection))));
}

std::vector<DrawerPosition> calc_cash(database::Connection& connection, const signin::Session& session,
                                      const common::Services& services, CalcCopy copy, Amount leave) {
    const std::int64_t store = session.store_code;
    const std::string moment = calc_moment(connection, store, copy);
    if (moment.empty()) return {};
    const Window window{"", moment, database::net_from(connection)};
    std::vector<DrawerPosition> computed;
    std::vector<Removal> removals;
    for (const auto& row : drawers_of(connection, store)) {
        computed.push_back(position_of(connection, calc_of(copy), store, row, window));
        const DrawerPosition& drawer = computed.back();
        if (drawer.position <= Amount()) {
            services.prompts.message(std::string(message::started_with) + drawer.position.text() +
                                     std::string(message::nothing_moved));
        }
        Removal removal{{store, drawer.drawer}, drawer.name, drawer.position, {}, moment, {}};
        if (drawer.drawer == session.cash_point && !leave.is_zero()) {
            // The moment may be long past, as the newest shift is often that of another drawer.
            removal.leave = leave;
            removal.held =
                calc_position(connection, copy, removal.drawer, common::next_second(services.clock.now()));
        }
        removals.push_back(std::move(removal));
    }
    const bool others = may_empty_others(connection, session, services.prompts, removals);
    for (std::size_t i = 0; i < removals.size(); ++i) {
        if (!others && removals[i].drawer.code != session.cash_point) continue;
        const auto transfer = transfer_of(connection, session, services.clock, removals[i]);
        if (!transfer) continue;
        write_transfer(connection, *transfer);
        computed[i].moved = transfer->amount;
    }
    return computed;
}

}  // namespace cash
