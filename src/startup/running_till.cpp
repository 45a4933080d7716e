#include "startup/running_till.h"

#include "common/text.h"
#include "database/till_tables.h"

namespace startup {

using database::quoted;
using database::Sql;

std::optional<std::string> RunningTill::claim(database::Connection& connection) const {
    std::optional<std::string> other;
    database::unless_table_is_missing([&] {
        // The server's clock decides, because those of the machines differ.
        const auto renewed = connection.execute(
            Sql("update till_running set place = ") + quoted(place_) +
            ", seen = getdate() where cash_no = " + cash_point_ + " and (place = " + quoted(place_) +
            " or seen < dateadd(second, " + -seconds_until_free + ", getdate()))");
        if (renewed > 0) return;
        const auto row =
            connection.query(Sql("select place from till_running where cash_no = ") + cash_point_);
        if (!row.empty()) {
            other = row.front().text("place");
            return;
        }
        // If two tills start at once, the key lets only one of them insert the row.
        try {
            connection.execute(Sql("insert into till_running (cash_no, place, seen) select ") + cash_point_ +
                               ", " + quoted(place_) + ", getdate()");
        } catch (const database::Error& error) {
            if (error.sqlstate() != database::key_violated) throw;
            other = database::text_of(
                connection.scalar(Sql("select place from till_running where cash_no = ") + cash_point_));
        }
    });
    return other;
}

void RunningTill::leave(database::Connection& connection) const {
    database::unless_table_is_missing([&] {
        connection.execute(Sql("delete from till_running where cash_no = ") + cash_point_ +
                           " and place = " + quoted(place_));
    });
}

}  // namespace startup
