#include "sales/shifts_of_user.h"

#include "database/sql.h"

namespace sales {

std::set<std::int64_t> shifts_of_user(database::Connection& connection, const signin::Session& session,
                                      std::int64_t user) {
    std::set<std::int64_t> shifts;
    for (const auto& row : connection.query(
             database::Sql("select distinct [Shift] from sales where stcode = ") + session.store_code +
             " and ptype = " + session.cash_point + " and [User] = " + user)) {
        if (!row.null("Shift")) shifts.insert(row.integer("Shift"));
    }
    return shifts;
}

}  // namespace sales
