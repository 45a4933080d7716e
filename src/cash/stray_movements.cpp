#include "cash/stray_movements.h"

namespace cash {

namespace {

using database::Fragment;
using database::quoted;
using database::Sql;

struct Source {
    Fragment from;  // the table joined to the drawers, up to the store
    Fragment day;   // the condition up to the day
};

constexpr Source sources[] = {
    {"sales LEFT OUTER JOIN cash ON sales.stcode = cash.stcode and sales.ptype = cash.code where "
     "sales.stcode = ",
     " and sales.date "},
    {"vencuspay LEFT OUTER JOIN cash ON vencuspay.stcode = cash.stcode and vencuspay.cash_n = cash.code "
     "where "
     "vencuspay.type = 1 and vencuspay.stcode = ",
     " and vencuspay.date "},
    {"btran LEFT OUTER JOIN cash ON btran.stcode = cash.stcode and btran.cash_n = cash.code where "
     "btran.type1 = 1 and btran.stcode = ",
     " and btran.date "},
    {"in_out LEFT OUTER JOIN cash ON in_out.stcode = cash.stcode and in_out.cash_n = cash.code where "
     "in_out.stcode = ",
     " and in_out.date "},
    {"dailyexp LEFT OUTER JOIN cash ON dailyexp.stcode = cash.stcode and dailyexp.cash_n = cash.code where "
     "dailyexp.stcode = ",
     " and dailyexp.expdate "},
    {"mor_les LEFT OUTER JOIN cash ON mor_les.stcode = cash.stcode and mor_les.ptype = cash.code where "
     "mor_les.stcode = ",
     " and mor_les.date "},
    {"cach_t LEFT OUTER JOIN cash ON cach_t.cfr = cash.stcode and cach_t.cash_nf = cash.code where "
     "cach_t.cfr = ",
     " and cach_t.cdate "},
    {"cach_t LEFT OUTER JOIN cash ON cach_t.cto = cash.stcode and cach_t.cash_nt = cash.code where "
     "cach_t.cto = ",
     " and cach_t.cdate "},
};

}  // namespace

std::int64_t count_stray_movements(database::Connection& connection, std::int64_t store,
                                   const common::Date& day) {
    std::int64_t found = 0;
    for (const Source& source : sources) {
        Sql statement("select count(*) as strays from ");
        statement += source.from;
        statement += store;
        statement += source.day;
        statement += ">= ";
        statement += quoted(common::Moment{day, {}});
        statement += source.day;
        statement += "<= ";
        statement += quoted(common::Moment{day, {23, 59, 59, 0}});
        statement += " and cash.code is null";
        found += database::integer_of(connection.scalar(statement));
    }
    return found;
}

}  // namespace cash
