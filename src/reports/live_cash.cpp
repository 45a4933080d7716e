#include "reports/live_cash.h"

#include "cash/cash_position.h"
#include "database/choices.h"
#include "database/till_settings.h"

namespace reports {

std::vector<DrawerCash> cash_of_drawers(database::Connection& connection, std::int64_t store,
                                        const common::Moment& now) {
    std::vector<DrawerCash> drawers;
    const auto net_from = database::net_from(connection);
    const auto stores = database::load_stores(connection);
    const cash::Window today{common::moment_text({now.date, {}}), common::moment_text(now), net_from};
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
            for (const cash::Sum& sum : cash::read_sums(connection, cash::shift_period, drawer, today)) {
                if (sum.term->movement == cash::Movement::card_sales) one.cards += sum.amount;
                if (sum.term->movement == cash::Movement::card_returns) one.cards -= sum.amount;
                if (sum.term->movement == cash::Movement::uncollected) one.uncollected += sum.amount;
            }
            drawers.push_back(std::move(one));
        }
    }
    return drawers;
}

}  // namespace reports
