#include "cash/cash_position.h"

#include <algorithm>

#include "cash/messages.h"
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
    std::string until;  // the moment of the position; its day is the transfer's date
};

Amount moved_since(database::Connection& connection, const Removal& removal) {
    return Amount(database::number_of(connection.scalar(
        Sql("SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cfr=") + removal.drawer.store +
        "  and cast(convert(varchar,cdate,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as "
        "datetime)>=" +
        quoted(removal.until) + "  and cach_t.cash_nf = " + removal.drawer.code)));
}

// Inserts one transfer to the main drawer of the main store and returns its amount; 0 if there is nothing to
// transfer: from the main drawer itself, from a position of zero or less, or if the drawer holds no more than
// what stays in it. What has left it at or after the moment is subtracted first: the position cannot see
// those transfers, since each is stamped with the time of writing, and two shift changes would otherwise
// transfer the same cash twice.
Amount move_cash(database::Connection& connection, const signin::Session& session, common::Clock& clock,
                 const Removal& removal) {
    if (removal.position <= Amount()) return {};
    const auto settings = connection.query("select * from basic");
    if (settings.empty()) return {};
    const Drawer main{settings.front().integer("mst"), settings.front().integer("mcash")};
    if (removal.drawer == main) return {};

    const Amount amount = removal.position - moved_since(connection, removal) - removal.leave;
    if (amount <= Amount()) return {};

    const std::int64_t number =
        database::integer_of(connection.scalar(" select max(cnum) as last_i from cach_t ")) + 1;
    const auto day = common::parse_moment(removal.until);
    const common::Moment now = clock.now();
    connection.execute(
        Sql("Insert Into cach_t (cnum,cdate,caml,cfr,cto,note1,cash_nf,cash_nt,user_c,time_) select ") +
        number + "," + quoted(day ? day->date : now.date) + "," + amount + "," + removal.drawer.store + "," +
        main.store + "," + quoted(std::string(message::transfer_from) + removal.drawer_name) + "," +
        removal.drawer.code + "," + main.code + "," + session.user_code + "," + quoted(now.time));
    return amount;
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

void CashPosition::move(Amount leave, std::int64_t drawer) {
    for (DrawerPosition& computed : drawers_) {
        if (drawer != 0 && drawer != computed.drawer) continue;
        computed.moved = move_cash(connection_, session_, clock_,
                                   {{store_, computed.drawer},
                                    computed.name,
                                    computed.position,
                                    in_single_precision(leave),
                                    common::moment_text(until_)});
        if (store_ == session_.store_code && computed.drawer == session_.cash_point) own_ = computed;
    }
}

std::vector<DrawerPosition> calc_cash(database::Connection& connection, const signin::Session& session,
                                      const common::Services& services, CalcCopy copy, Amount leave) {
    const std::int64_t store = session.store_code;
    const std::string moment = calc_moment(connection, store, copy);
    if (moment.empty()) return {};
    const Procedure& procedure = copy == CalcCopy::shift_start ? calc_of_shift_start : calc_of_shift_close;
    const Window window{"", moment, database::net_from(connection)};
    std::vector<DrawerPosition> computed;
    // One after the other: a drawer may receive what an earlier one has just given away.
    for (const auto& row : drawers_of(connection, store)) {
        DrawerPosition drawer = position_of(connection, procedure, store, row, window);
        if (drawer.position <= Amount()) {
            services.prompts.message(std::string(message::started_with) + drawer.position.text() +
                                     std::string(message::nothing_moved));
        } else {
            drawer.moved = move_cash(connection, session, services.clock,
                                     {{store, drawer.drawer},
                                      drawer.name,
                                      drawer.position,
                                      drawer.drawer == session.cash_point ? leave : Amount(),
                                      moment});
        }
        computed.push_back(std::move(drawer));
    }
    return computed;
}

}  // namespace cash
