#include "reports/live_cash.h"

#include "cash/cash_position.h"
#include "database/choices.h"
#include "reports/sales_sums.h"
#include "sales/invoice.h"

namespace reports {

using database::Sql;

TableRow row_of(const DrawerCash& drawer) {
    return {key_in_store(drawer.store, drawer.drawer),
            drawer.name,
            {drawer.cash.value(), drawer.cards.value(), drawer.uncollected.value()}};
}

std::vector<DrawerCash> cash_of_drawers(database::Connection& connection, std::int64_t store,
                                        const common::Moment& now) {
    std::vector<DrawerCash> drawers;
    const auto stores = database::load_stores(connection);
    for (const common::Choice& place : stores) {
        if (store != 0 && place.code != store) continue;
        for (const common::Choice& choice : database::load_drawers(connection, place.code)) {
            const cash::Drawer drawer{place.code, choice.code};
            DrawerCash one{place.code,
                           choice.code,
                           stores.size() > 1 ? choice.name + " · " + place.name : choice.name,
                           cash::position_at(connection, drawer, common::next_second(now)),
                           {},
                           {}};
            const Period today{now.date, now.date, place.code};
            const Sql of_drawer = Sql(" and ptype = ") + choice.code + " and ";
            const auto card = static_cast<std::int64_t>(sales::PaymentOption::card);
            one.cards = common::Amount(
                sales_of(connection, today, of_drawer + condition_of(SalesKey::payment, card, today)).net());
            one.uncollected = common::Amount(
                sales_of(connection, today, of_drawer + "vcode = -1 and stype = 4 and safe = 0").net());
            drawers.push_back(std::move(one));
        }
    }
    return drawers;
}

}  // namespace reports
