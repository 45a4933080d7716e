#include "bench/movements.h"

#include <cmath>

#include "bench/fill.h"
#include "bench/invoices.h"

namespace bench {

namespace {

using database::Connection;

// A row per drawer and day, numbered from 1.
struct DrawerDay {
    explicit DrawerDay(std::int64_t number)
        : drawer(1 + (number - 1) % Sizes::drawers),
          shift(1 + (number - 1) / Sizes::drawers),
          date(common::add_days(last_day, static_cast<long>(shift) - Sizes::days)) {}
    std::int64_t drawer;
    std::int64_t shift;
    common::Date date;
};
constexpr std::int64_t drawer_days = std::int64_t{Sizes::days} * Sizes::drawers;

void fill_shifts(Connection& connection) {
    fill(connection, "insert into shift (stcode,cash_no,scode,s_date,e_date,man_) values (?,?,?,?,?,?)",
         drawer_days, [](std::int64_t number) {
             const DrawerDay at(number);
             const bool open = at.date == last_day;
             return Cells{whole(1),
                          whole(at.drawer),
                          whole(at.shift),
                          database::Value(common::Moment{at.date, {8, 0, 0, 0}}),
                          open ? database::Value() : database::Value(common::Moment{at.date, {22, 0, 0, 0}}),
                          whole(1)};
         });
}

void fill_day_ends(Connection& connection, const Sizes& sizes) {
    // Roughly the cash that a drawer takes in a day.
    const double taken = 900.0 * sizes.invoices / static_cast<double>(drawer_days);
    const common::Moment evening{last_day, {22, 0, 0, 0}};
    const std::int64_t ended = drawer_days - Sizes::drawers;
    // The main drawer gets the cash of the others.
    constexpr std::int64_t givers = Sizes::drawers - 1;
    fill(connection,
         "insert into cach_t (cnum,cdate,caml,cfr,cto,cash_nf,cash_nt,user_c,time_) values "
         "(?,?,?,?,?,?,?,?,?)",
         (Sizes::days - 1) * givers, [&](std::int64_t number) {
             const auto back = static_cast<long>((number - 1) / givers + 1);
             return Cells{whole(number),
                          day({common::add_days(last_day, back - Sizes::days), {}}),
                          std::round(taken * (80 + noise(static_cast<std::uint64_t>(number)) % 40) / 100),
                          whole(1),
                          whole(1),
                          whole(2 + number % givers),
                          whole(1),
                          whole(1),
                          time_of(evening)};
         });
    fill(connection, "insert into mor_les ([date],stcode,ptype,aml,time_) values (?,?,?,?,?)", ended,
         [&](std::int64_t number) {
             const DrawerDay at(number);
             return Cells{
                 day({at.date, {}}), whole(1), whole(at.drawer),
                 (static_cast<double>(noise(static_cast<std::uint64_t>(number) + 3) % 2000) - 1000) / 100,
                 time_of(evening)};
         });
}

}  // namespace

void fill_movements(Connection& connection, const Sizes& sizes) {
    fill_shifts(connection);
    fill_day_ends(connection, sizes);
    const int count = sizes.movements();
    fill(connection,
         "insert into vencuspay (pay_id,chkno,ptype,ztype,vcode,[date],time_,[type],quan,stcode,cash_n,shift,"
         "ucode) values (?,?,?,?,?,?,?,?,?,?,?,?,?)",
         count, [&](std::int64_t number) {
             const Movement row = movement(sizes, number);
             return Cells{static_cast<double>(number),
                          text(std::to_string(number)),
                          whole(1 + row.kind),
                          whole(2),
                          whole(1 + number % Sizes::customers),
                          day(row.moment),
                          time_of(row.moment),
                          whole(1),
                          row.amount,
                          whole(1),
                          whole(row.drawer),
                          whole(shift_of(row.moment.date)),
                          whole(1)};
         });
    fill(connection,
         "insert into btran (ser,bcode,[date],time_,quan,[type],type1,stcode,cash_n) values "
         "(?,?,?,?,?,?,?,?,?)",
         count, [&](std::int64_t number) {
             const Movement row = movement(sizes, number);
             return Cells{whole(number),   whole(1), day(row.moment), time_of(row.moment), row.amount,
                          whole(row.kind), whole(1), whole(1),        whole(row.drawer)};
         });
    fill(connection, "insert into in_out (ser,[date],time_,aml,type1,stcode,cash_n) values (?,?,?,?,?,?,?)",
         count, [&](std::int64_t number) {
             const Movement row = movement(sizes, number);
             return Cells{whole(number),   day(row.moment), time_of(row.moment), row.amount,
                          whole(row.kind), whole(1),        whole(row.drawer)};
         });
    fill(connection,
         "insert into dailyexp (expdate,time_,[value],stcode,cash_n,mcode,scode) values (?,?,?,?,?,?,?)",
         count, [&](std::int64_t number) {
             const Movement row = movement(sizes, number);
             return Cells{day(row.moment), time_of(row.moment), row.amount,
                          whole(1),        whole(row.drawer),   whole(1),
                          whole(1)};
         });
}

}  // namespace bench
