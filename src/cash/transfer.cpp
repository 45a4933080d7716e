#include "cash/transfer.h"

#include "cash/cash_sums.h"
#include "cash/messages.h"
#include "common/numbers.h"

namespace cash {

namespace {

using database::quoted;
using database::Sql;

double moved_since(database::Connection& connection, const Removal& removal) {
    const auto sum = connection.scalar(
        Sql("SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cfr=") + removal.drawer.store +
        "  and cast(convert(varchar,cdate,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as "
        "datetime)>=" +
        quoted(removal.until) + "  and cach_t.cash_nf = " + removal.drawer.code);
    return common::round_decimals(database::number_of(sum), 2);
}

}  // namespace

double move_cash(database::Connection& connection, const signin::Session& session, common::Clock& clock,
                 const Removal& removal) {
    if (!(removal.position > 0)) return 0;
    const auto settings = connection.query("select * from basic");
    if (settings.empty()) return 0;
    const Drawer main{settings.front().integer("mst"), settings.front().integer("mcash")};
    if (removal.drawer == main) return 0;

    const double amount =
        common::round_decimals(removal.position - moved_since(connection, removal) - removal.leave, 2);
    if (!(amount > 0)) return 0;

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

}  // namespace cash
