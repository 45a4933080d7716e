// The money of all drawers at this moment: cash by the same sums as the till's.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/amount.h"
#include "common/date_time.h"
#include "database/connection.h"
#include "reports/table.h"

namespace reports {

struct DrawerCash {
    std::int64_t store = 0;
    std::int64_t drawer = 0;
    std::string name;            // of the drawer, with its store's if there are several
    common::Amount cash;         // by the books
    common::Amount cards;        // what was paid by card today, less card returns
    common::Amount uncollected;  // telephone orders of today that have not been paid
};
// The row of the report: the key to the movements behind it, and its figures.
TableRow row_of(const DrawerCash& drawer);
// Store 0 is every store.
std::vector<DrawerCash> cash_of_drawers(database::Connection& connection, std::int64_t store,
                                        const common::Moment& now);

}  // namespace reports
