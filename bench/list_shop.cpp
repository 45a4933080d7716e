#include "bench/list_shop.h"

#include <fmt/format.h>

#include "bench/shop_data.h"
#include "database/embedded/open.h"

namespace bench {

namespace {

using database::Connection;
using database::Value;

Value moment(std::int64_t seconds) {
    const auto of_day = static_cast<int>(seconds % 50'000);
    return Value(common::Moment{{1900, 1, 1}, {of_day / 3600, of_day / 60 % 60, of_day % 60, 0}});
}

Value day(std::int64_t back) {
    return Value(common::Moment{common::add_days(last_day, -static_cast<long>(back % 20)), {}});
}

std::string name_of(std::int64_t code) {
    static constexpr const char* names[] = {"مطعم الركن", "كافتيريا النور", "أسواق المدينة", "ورشة الأمانة"};
    return fmt::format("{} {}", names[code % 4], code);
}

void fill_people(Connection& connection, int rows) {
    const auto after = [&](database::Fragment statement) {
        return database::integer_of(connection.scalar(statement));
    };
    const std::int64_t customers = after("select max(ccode) as top_ from custdata");
    fill(connection, "insert into custdata (ccode,cname,cphone,copen,cacc) values (?,?,?,?,?)",
         rows - customers, [&](std::int64_t number) {
             const std::int64_t code = customers + number;
             return Cells{code, name_of(code), fmt::format("01{:09}", code), 0.0,
                          static_cast<double>(code % 9000) + 0.25};
         });
    const std::int64_t receivers = after("select max(ccode) as top_ from boundata");
    fill(connection, "insert into boundata (ccode,cname) values (?,?)", rows - receivers,
         [&](std::int64_t number) {
             return Cells{receivers + number, name_of(receivers + number)};
         });
    fill(connection, "insert into cust_cash (zcode,zname,zphone,zmail) values (?,?,?,?)", rows,
         [](std::int64_t code) {
             return Cells{code, name_of(code), fmt::format("01{:09}", code), fmt::format("c{}@shop", code)};
         });
    constexpr int most_stores = 100;
    const std::int64_t stores = after("select max(code) as top_ from stocks");
    fill(connection, "insert into stocks (code,name) values (?,?)", std::min(rows, most_stores) - stores,
         [&](std::int64_t number) {
             return Cells{stores + number, name_of(stores + number)};
         });
}

void fill_papers(Connection& connection, int rows) {
    constexpr int lines_of_an_offer = 3;
    fill(connection,
         "insert into offer (ofr_num,f0,f1,f2,vcode,ctype,stype,user_,pdis,cust_c,[date]) values "
         "(?,?,?,?,?,?,?,?,?,?,?)",
         std::int64_t{rows} * lines_of_an_offer, [](std::int64_t line) {
             const std::int64_t number = 1 + (line - 1) / lines_of_an_offer;
             const bool cash = number % 3 == 0;
             return Cells{number,
                          std::to_string(1 + (line - 1) % lines_of_an_offer),
                          std::to_string(number),
                          name_of(number),
                          cash ? -1 : number,
                          std::int64_t{0},
                          std::int64_t{0},
                          std::int64_t{1},
                          0.0,
                          cash ? Value(number) : Value(),
                          day(number)};
         });
    fill(connection,
         "insert into vencuspay (pay_id,chkno,ptype,ztype,vcode,[date],time_,[type],quan,quan1,stcode,cash_n,"
         "shift,ucode) values (?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
         rows, [rows](std::int64_t number) {
             return Cells{static_cast<double>(number),
                          std::to_string(number),
                          std::int64_t{2},
                          std::int64_t{2},
                          std::int64_t{1},
                          day(number),
                          moment(number),
                          std::int64_t{1},
                          static_cast<double>(number % 900) + 0.5,
                          static_cast<double>(number % 900) + 0.5,
                          std::int64_t{1},
                          std::int64_t{1},
                          std::int64_t{rows},
                          std::int64_t{1}};
         });
}

void fill_day(Connection& connection, int rows) {
    fill(connection, "insert into shift (stcode,cash_no,scode,s_date,e_date,man_) values (?,?,?,?,?,?)", rows,
         [rows](std::int64_t number) {
             const auto date = common::add_days(last_day, static_cast<long>(number) - rows);
             return Cells{std::int64_t{1},
                          std::int64_t{1},
                          number,
                          Value(common::Moment{date, {8, 0, 0, 0}}),
                          number == rows ? Value() : Value(common::Moment{date, {22, 0, 0, 0}}),
                          std::int64_t{1}};
         });
    fill(connection,
         "insert into sales "
         "(pnum,vcode,[date],ctype,ptot,pdis,ptax,stcode,[user],wcode,types,shift,time_,stype,ptype,inv_type,"
         "disboun,cust_c) values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
         rows, [rows](std::int64_t number) {
             const std::int64_t zero = 0;
             const std::int64_t one = 1;
             return Cells{number,
                          std::int64_t{-1},
                          day(0),
                          zero,
                          static_cast<double>(number % 700) + 0.75,
                          0.0,
                          zero,
                          one,
                          one,
                          number % 7,
                          zero,
                          std::int64_t{rows},
                          moment(8 * 3600 + number * 5 % 14'000),
                          zero,
                          one,
                          zero,
                          0.0,
                          number % 5 == 0 ? Value(number) : Value()};
         });
}

}  // namespace

void make_list_shop(const std::filesystem::path& file, int rows) {
    const auto connection = database::open_embedded(file, true);
    make_goods(*connection, list_sizes(rows));
    fill_people(*connection, rows);
    fill_papers(*connection, rows);
    fill_day(*connection, rows);
    connection->make_durable();
}

}  // namespace bench
