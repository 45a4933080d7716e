#include "bench/shop_data.h"

#include <fmt/format.h>

#include <functional>
#include <string>
#include <vector>

#include "bench/rows.h"
#include "database/open.h"
#include "database/schema.h"

namespace bench {

namespace fs = std::filesystem;
using database::Connection;
using database::Fragment;
using database::Sql;
using database::Value;

namespace {

constexpr int rows_per_transaction = 20'000;

Value whole(std::int64_t number) {
    return Value(number);
}
Value text(std::string value) {
    return Value(std::move(value));
}

// Inserts rows 1 to `count`, many at a time.
void fill(Connection& connection, Fragment insert, std::int64_t count,
          const std::function<std::vector<Value>(std::int64_t)>& row) {
    for (std::int64_t number = 1; number <= count;) {
        connection.execute("begin transaction");
        for (int i = 0; i < rows_per_transaction && number <= count; ++i, ++number)
            connection.execute(insert, row(number));
        connection.execute("commit transaction");
    }
}

void fill_goods(Connection& connection, const Sizes& sizes) {
    fill(connection,
         "insert into items (code,name,itype,fact,num1,num2,num3,price11,price12,price13,price21,price22,"
         "price23,price31,price32,price33,sale_only) values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
         sizes.items, [](std::int64_t code) {
             const double price =
                 1 + static_cast<double>(noise(static_cast<std::uint64_t>(code)) % 20'000) / 100;
             return std::vector<Value>{
                 whole(code),
                 text(fmt::format("صنف {} رقم {}", noise(static_cast<std::uint64_t>(code)) % 977, code)),
                 whole(code % 20),
                 whole(code % 50),
                 1.0,
                 6.0,
                 24.0,
                 price * 0.8,
                 price,
                 price * 0.95,
                 price * 5,
                 price * 5.8,
                 price * 5.6,
                 price * 19,
                 price * 22,
                 price * 21,
                 whole(0)};
         });
    fill(connection, "insert into barcode (bar,code,scode) values (?,?,?)", sizes.items,
         [](std::int64_t code) {
             return std::vector<Value>{text(fmt::format("622{:010}", code)), whole(code), whole(1)};
         });
    fill(connection, "insert into stk (icode,stcode,edate,quan) values (?,?,?,?)", sizes.stock_rows,
         [&](std::int64_t number) {
             return std::vector<Value>{
                 whole(1 + (number - 1) % sizes.items), whole(1),
                 Value(common::Moment{common::add_days(last_day, 30 + number / sizes.items * 90), {}}), 1e6};
         });
}

void fill_invoices(Connection& connection, const Sizes& sizes) {
    fill(connection,
         "insert into sales "
         "(pnum,vcode,date,ctype,ptot,pdis,ptax,stcode,[user],wcode,stype,ptype,time_,disboun,"
         "shift) values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
         sizes.invoices, [&](std::int64_t number) {
             const InvoiceRow row = invoice_row(sizes, number);
             return std::vector<Value>{whole(row.number),
                                       whole(row.vcode),
                                       Value(common::Moment{row.moment.date, {}}),
                                       whole(row.ctype),
                                       row.total,
                                       0.0,
                                       0.0,
                                       whole(1),
                                       whole(1),
                                       whole(1),
                                       whole(row.stype),
                                       whole(row.drawer),
                                       Value(common::Moment{{1900, 1, 1}, row.moment.time}),
                                       row.disboun,
                                       whole(1)};
         });
    fill(connection,
         "insert into saledata "
         "(pnum,vcode,date,ctype,stcode,stype,serial,icode,note,quan,price,disc,unit1,scode,"
         "quan1) values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
         sizes.lines(), [&](std::int64_t number) {
             const std::int64_t invoice = 1 + (number - 1) / sizes.lines_per_invoice;
             const InvoiceRow row = invoice_row(sizes, invoice);
             return std::vector<Value>{whole(invoice),
                                       whole(row.vcode),
                                       Value(common::Moment{row.moment.date, {}}),
                                       whole(row.ctype),
                                       whole(1),
                                       whole(row.stype),
                                       whole(1 + (number - 1) % sizes.lines_per_invoice),
                                       whole(1 + noise(static_cast<std::uint64_t>(number)) % sizes.items),
                                       text("صنف"),
                                       1.0,
                                       row.total / sizes.lines_per_invoice,
                                       0.0,
                                       1.0,
                                       whole(1),
                                       1.0};
         });
}

void fill_movements(Connection& connection, const Sizes& sizes) {
    const auto day = [](const MovementRow& row) { return Value(common::Moment{row.moment.date, {}}); };
    const auto time = [](const MovementRow& row) {
        return Value(common::Moment{{1900, 1, 1}, row.moment.time});
    };
    const auto count = movements(sizes);
    fill(connection,
         "insert into vencuspay (pay_id,chkno,ptype,ztype,vcode,date,time_,type,quan,stcode,cash_n) values "
         "(?,?,?,?,?,?,?,?,?,?,?)",
         count, [&](std::int64_t number) {
             const MovementRow row = movement_row(sizes, number);
             return std::vector<Value>{static_cast<double>(number),
                                       text(std::to_string(number)),
                                       whole(1 + row.kind),
                                       whole(2),
                                       whole(1),
                                       day(row),
                                       time(row),
                                       whole(1),
                                       row.amount,
                                       whole(1),
                                       whole(row.drawer)};
         });
    fill(connection,
         "insert into btran (ser,bcode,date,time_,quan,type,type1,stcode,cash_n) values (?,?,?,?,?,?,?,?,?)",
         count, [&](std::int64_t number) {
             const MovementRow row = movement_row(sizes, number);
             return std::vector<Value>{whole(number),   whole(1), day(row), time(row),        row.amount,
                                       whole(row.kind), whole(1), whole(1), whole(row.drawer)};
         });
    fill(connection, "insert into in_out (ser,date,time_,aml,type1,stcode,cash_n) values (?,?,?,?,?,?,?)",
         count, [&](std::int64_t number) {
             const MovementRow row = movement_row(sizes, number);
             return std::vector<Value>{whole(number),   day(row), time(row),        row.amount,
                                       whole(row.kind), whole(1), whole(row.drawer)};
         });
    fill(connection,
         "insert into dailyexp (expdate,time_,value,stcode,cash_n,mcode,scode) values (?,?,?,?,?,?,?)", count,
         [&](std::int64_t number) {
             const MovementRow row = movement_row(sizes, number);
             return std::vector<Value>{day(row),          time(row), row.amount, whole(1),
                                       whole(row.drawer), whole(1),  whole(1)};
         });
}

void fill_shop(Connection& connection, const Sizes& sizes) {
    for (const char* statement : {
             "insert into basic (aname,ename,tel,[print],cash,max_dis,st_d,mst,mcash) select "
             "N'متجر القياس','','','win','',10,1,1,1",
             "insert into stocks (code,name) select 1,N'الفرع الرئيسي'",
             "insert into worker (work_code,work_name) select 1,N'سعاد'",
             "insert into users (code,name,pass) select 1,N'مدير','1'",
             "insert into shift (stcode,cash_no,scode,s_date) select 1,1,1,'2026/11/21 08:00:00'",
         })
        connection.execute(Sql::from_administrator(statement));
    connection.execute(Sql("update users set perm = ") + database::quoted(std::string(400, '1')));
    fill(
        connection, "insert into cash (code,name,stcode,copen,salary1) values (?,?,?,?,?)", sizes.drawers,
        [](std::int64_t code) {
            return std::vector<Value>{whole(code), text(fmt::format("درج {}", code)), whole(1), 100.0, 100.0};
        });
    fill(connection, "insert into custdata (ccode,cname,copen,cacc) values (?,?,?,?)", 200,
         [](std::int64_t code) {
             return std::vector<Value>{whole(code), text(fmt::format("عميل {}", code)), 0.0, 0.0};
         });
    fill_goods(connection, sizes);
    fill_invoices(connection, sizes);
    fill_movements(connection, sizes);
}

}  // namespace

fs::path shop_of(const fs::path& folder, const Sizes& sizes) {
    const fs::path file = folder / fmt::format("shop-{}.db", sizes.invoices);
    if (fs::exists(file)) return file;
    fs::create_directories(folder);
    const fs::path half = folder / "half-made.db";
    for (const char* ending : {"", "-wal", "-shm"})
        fs::remove(half.string() + ending);
    {
        const auto connection = database::open_embedded(half, true);
        database::create_base_schema(*connection);
        database::run_upgrade_list(*connection);
        fill_shop(*connection, sizes);
        database::run_upgrade_list(*connection);
        connection->settle();
    }
    fs::rename(half, file);
    return file;
}

}  // namespace bench
