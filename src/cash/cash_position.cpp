#include "cash/cash_position.h"

#include "cash/cash_sums.h"
#include "cash/messages.h"
#include "cash/transfer.h"
#include "common/numbers.h"

namespace cash {

using database::Sql;

double invoice_discounts(database::Connection& connection, const Drawer& drawer, const common::Moment& start,
                         const common::Moment& until) {
    double discounts = 0;
    for (const Sum& sum : read_all_sums(connection, discount_period, drawer,
                                        {common::moment_text(start), common::moment_text(until)}))
        discounts = add_amounts(discounts, sum.reading->sign * sum.amount);
    return discounts;
}

void CashPosition::compute(std::int64_t store, const common::Moment& start,
                           const common::Moment& until_moment, const common::Moment& end_of_period) {
    drawers_.clear();
    own_ = {};
    store_ = store;
    until_ = until_moment;
    const Window position_window = until(until_moment);
    const Window period{common::moment_text(start), common::moment_text(end_of_period)};

    for (const auto& row : connection_.query(Sql("select * from cash where stcode = ") + store)) {
        const Drawer drawer{store, row.integer("code")};
        DrawerPosition computed;
        computed.drawer = drawer.code;
        computed.name = row.text("Name");
        computed.position = total_of(read_all_sums(connection_, store_wide, drawer, position_window));
        const auto figure = [&](Movement movement) {
            return read_sums(connection_, shift_period, movement, drawer, period).front().amount;
        };
        computed.card_sales =
            static_cast<float>(add_amounts(figure(Movement::card_sales), -figure(Movement::card_returns)));
        computed.uncollected = static_cast<float>(figure(Movement::uncollected));
        computed.discounts = invoice_discounts(connection_, drawer, start, until_moment);
        if (store == session_.store_code && drawer.code == session_.cash_point) own_ = computed;
        drawers_.push_back(std::move(computed));
    }
}

void CashPosition::move(float leave, std::int64_t drawer) {
    for (DrawerPosition& computed : drawers_) {
        if (drawer != 0 && drawer != computed.drawer) continue;
        computed.moved = move_cash(connection_, session_, clock_,
                                   {{store_, computed.drawer},
                                    computed.name,
                                    computed.position,
                                    static_cast<double>(leave),
                                    common::moment_text(until_)});
        if (store_ == session_.store_code && computed.drawer == session_.cash_point) own_ = computed;
    }
}

namespace {

// Up to which moment a copy counts. shiftc looks at the shift that started last anywhere and drops the
// seconds.
std::string calc_moment(database::Connection& connection, std::int64_t store, CalcCopy copy) {
    const auto shifts =
        copy == CalcCopy::shift_start
            ? connection.query("select * from shift Order By s_date")
            : connection.query(Sql("select * FROM shift  where stcode = ") + store + " Order By scode");
    if (shifts.empty()) return "";
    const std::string text = common::moment_text(shifts.rows().back().moment("s_date"));
    return copy == CalcCopy::shift_start ? text.substr(0, text.size() - 3) : text;
}

}  // namespace

std::vector<DrawerPosition> calc_cash(database::Connection& connection, const signin::Session& session,
                                      const common::Services& services, CalcCopy copy, double leave) {
    std::vector<DrawerPosition> computed;
    const std::int64_t store = session.store_code;
    const std::string moment = calc_moment(connection, store, copy);
    if (moment.empty()) return computed;
    const Procedure& procedure = copy == CalcCopy::shift_start ? calc_of_shift_start : calc_of_shift_close;

    for (const auto& row : connection.query(Sql("select * from cash where stcode = ") + store)) {
        const Drawer drawer{store, row.integer("code")};
        DrawerPosition position;
        position.drawer = drawer.code;
        position.name = row.text("Name");
        position.position = total_of(read_all_sums(connection, procedure, drawer, {"", moment}));
        if (position.position <= 0) {
            services.prompts.message(std::string(message::started_with) +
                                     common::format_amount(position.position) +
                                     std::string(message::nothing_moved));
        } else {
            position.moved = move_cash(connection, session, services.clock,
                                       {drawer, position.name, position.position,
                                        drawer.code == session.cash_point ? leave : 0, moment});
        }
        computed.push_back(std::move(position));
    }
    return computed;
}

}  // namespace cash
