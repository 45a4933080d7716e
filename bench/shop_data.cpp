#include "bench/shop_data.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include "bench/invoices.h"
#include "database/embedded/open.h"
#include "database/schema/schema.h"
#include "database/till_settings.h"

namespace database {
extern const std::string_view base_schema_text;
}

namespace bench {

namespace fs = std::filesystem;
using database::Connection;
using database::Sql;

namespace {

database::Value whole(std::int64_t number) {
    return database::Value(number);
}
database::Value text(std::string value) {
    return database::Value(std::move(value));
}
database::Value day(const common::Moment& moment) {
    return database::Value(common::Moment{moment.date, {}});
}
// Times of day have the server's day zero as their date.
database::Value time_of(const common::Moment& moment) {
    return database::Value(common::Moment{{1900, 1, 1}, moment.time});
}

}  // namespace

void fill(Connection& connection, database::Fragment insert, std::int64_t count,
          const std::function<Cells(std::int64_t)>& row) {
    constexpr int rows_per_transaction = 20'000;
    for (std::int64_t number = 1; number <= count;) {
        connection.execute("begin transaction");
        for (int i = 0; i < rows_per_transaction && number <= count; ++i, ++number)
            connection.execute(insert, row(number));
        connection.execute("commit transaction");
    }
}

namespace {

// Raise it when the rows change. It is part of a kept file's name, as is the schema, so that an outdated file
// is not measured.
constexpr int edition = 4;

std::uint32_t schema_mark() {
    std::uint64_t mark = 0;
    for (const char c : database::base_schema_text)
        mark = mark * 31 + static_cast<unsigned char>(c);
    return noise(mark);
}

void fill_lists(Connection& connection) {
    for (const char* statement : {
             "insert into basic (aname,ename,tel,[print],cash,max_dis,st_d,mst,mcash) select "
             "N'متجر القياس','','','lpt1','',10,1,1,1",
             "insert into stocks (code,name) select 1,N'الفرع الرئيسي'",
             "insert into stocks (code,name) select 2,N'المخزن'",
             "insert into users (code,name,pass) select 1,N'مدير','1'",
             "insert into bankdata (bcode,bname) select 1,N'البنك'",
         })
        connection.execute(Sql::from_administrator(statement));
    connection.execute(Sql("update users set perm = ") + database::quoted(std::string(400, '1')));
    fill(connection, "insert into worker (work_code,work_name) values (?,?)", 6, [](std::int64_t code) {
        return Cells{whole(code), text(fmt::format("بائع {}", code))};
    });
    fill(connection, "insert into cash (code,name,stcode,copen,salary1) values (?,?,?,?,?)", Sizes::drawers,
         [](std::int64_t code) {
             return Cells{whole(code), text(fmt::format("درج {}", code)), whole(1), 100.0, 100.0};
         });
    fill(connection, "insert into custdata (ccode,cname,copen,cacc) values (?,?,?,?)", Sizes::customers,
         [](std::int64_t code) {
             return Cells{whole(code), text(fmt::format("عميل {}", code)), 0.0, 0.0};
         });
    fill(connection, "insert into boundata (ccode,cname) values (?,?)", 5, [](std::int64_t code) {
        return Cells{whole(code), text(fmt::format("عامل {}", code))};
    });
    fill(connection, "insert into item_types (code,name) values (?,?)", 20, [](std::int64_t code) {
        return Cells{whole(code), text(fmt::format("مجموعة {}", code))};
    });
    fill(connection, "insert into makers (code,name) values (?,?)", 50, [](std::int64_t code) {
        return Cells{whole(code), text(fmt::format("شركة {}", code))};
    });
}

void fill_goods(Connection& connection, const Sizes& sizes) {
    fill(connection,
         "insert into items (code,name,itype,fact,num1,num2,num3,price11,price12,price13,price21,price22,"
         "price23,price31,price32,price33,sale_only) values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
         sizes.items(), [](std::int64_t code) {
             const double price = retail_price(code);
             const auto at = [&](double share) { return whole_cents(price * share); };
             return Cells{whole(code),
                          text(item_name(code)),
                          whole(1 + code % 20),
                          whole(1 + code % 50),
                          1.0,
                          6.0,
                          24.0,
                          at(0.8),
                          price,
                          at(0.95),
                          at(4.8),
                          at(5.8),
                          at(5.6),
                          at(19),
                          at(22),
                          at(21),
                          whole(0)};
         });
    fill(connection, "insert into barcode (bar,code,scode) values (?,?,?)", sizes.items(),
         [](std::int64_t code) {
             return Cells{text(fmt::format("622{:010}", code)), whole(code), whole(1)};
         });
    fill(connection, "insert into stk (icode,stcode,edate,quan) values (?,?,?,?)", sizes.stock_rows(),
         [&](std::int64_t number) {
             const std::int64_t batch = (number - 1) / sizes.items();  // 0 and 1 in the shop, 2 in the store
             return Cells{
                 whole(1 + (number - 1) % sizes.items()), whole(batch == 2 ? 2 : 1),
                 database::Value(common::Moment{
                     common::add_days(last_day,
                                      30 + static_cast<long>(batch) * 90 +
                                          static_cast<long>(noise(static_cast<std::uint64_t>(number)) % 60)),
                     {}}),
                 // Every tenth item has sold out its older batch.
                 batch == 0 && number % 10 == 0 ? 0.0
                                                : 60.0 + noise(static_cast<std::uint64_t>(number) + 5) % 240};
         });
}

void fill_headers(Connection& connection, const Sizes& sizes) {
    InvoiceMaker headers(sizes);
    fill(connection,
         "insert into sales "
         "(pnum,vcode,[date],ctype,ptot,pdis,ptax,stcode,[user],wcode,types,shift,time_,stype,ptype,inv_type,"
         "disboun,safe,link) values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
         sizes.invoices, [&](std::int64_t order) {
             const SoldInvoice invoice = headers.next();
             const database::Value none{};
             return Cells{whole(invoice.number),
                          whole(invoice.vcode),
                          day(invoice.moment),
                          whole(invoice.ctype),
                          invoice.total(),
                          invoice.discount,
                          whole(0),
                          whole(1),
                          whole(1),
                          whole(order % 7),
                          whole(0),
                          whole(invoice.shift),
                          time_of(invoice.moment),
                          whole(invoice.stype),
                          whole(invoice.drawer),
                          whole(invoice.ctype),
                          invoice.disboun,
                          invoice.stype == 1   ? whole(1)
                          : invoice.stype == 4 ? whole(0)
                                               : none,
                          invoice.stype == 2 ? whole(1 + order % 5) : none};
         });
}

void fill_lines(Connection& connection, const Sizes& sizes) {
    InvoiceMaker invoices(sizes);
    SoldInvoice invoice = invoices.next();
    std::size_t at = 0;
    fill(
        connection,
        "insert into saledata "
        "(pnum,vcode,[date],ctype,stcode,stype,serial,sid,icode,note,quan,price,disc,unit1,scode,quan1,edate,"
        "time_,inv_type) values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
        sizes.lines(), [&](std::int64_t) {
            if (at == invoice.lines.size()) {
                invoice = invoices.next();
                at = 0;
            }
            const SoldLine& line = invoice.lines[at++];
            return Cells{whole(invoice.number),
                         whole(invoice.vcode),
                         day(invoice.moment),
                         whole(invoice.ctype),
                         whole(1),
                         whole(invoice.stype),
                         whole(static_cast<std::int64_t>(at)),
                         whole(static_cast<std::int64_t>(at)),
                         whole(line.item),
                         text(item_name(line.item)),
                         line.quantity,
                         line.price,
                         0.0,
                         1.0,
                         whole(1),
                         line.quantity,
                         database::Value(common::Moment{common::add_days(invoice.moment.date, 60), {}}),
                         time_of(invoice.moment),
                         whole(invoice.ctype)};
        });
}

}  // namespace

void make_goods(Connection& connection, const Sizes& sizes) {
    database::create_base_schema(connection);
    database::run_upgrade_list(connection);
    database::set_till_setting(connection, database::setting::net_from, "1900/01/01");
    fill_lists(connection);
    fill_goods(connection, sizes);
}

namespace {

void make_shop(const fs::path& file, const Sizes& sizes) {
    std::fprintf(stderr, "making a shop of %d invoices, once\n", sizes.invoices);
    const auto connection = database::open_embedded(file, true);
    make_goods(*connection, sizes);
    fill_headers(*connection, sizes);
    fill_lines(*connection, sizes);
    fill_movements(*connection, sizes);
    database::run_upgrade_list(*connection);
    connection->make_durable();
}

// Two runs at the same time make a shop only once.
class Alone {
  public:
    explicit Alone(const fs::path& folder)
        : lock_(::open((folder / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644)) {
        if (lock_ < 0 || ::flock(lock_, LOCK_EX) != 0)
            throw std::runtime_error("cannot write in " + folder.string());
    }
    ~Alone() { ::close(lock_); }
    Alone(const Alone&) = delete;
    Alone& operator=(const Alone&) = delete;

  private:
    int lock_;
};

// Removes files of an earlier edition or schema.
void remove_older(const fs::path& folder, const std::string& name) {
    std::vector<fs::path> older;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().filename().string().starts_with(name)) older.push_back(entry.path());
    for (const fs::path& file : older)
        fs::remove(file);
}

void check_rows(const fs::path& file, const Sizes& sizes) {
    const Counted held = count_rows(file);
    if (held.items != sizes.items() || held.stock_rows != sizes.stock_rows() ||
        held.invoices != sizes.invoices || held.lines != sizes.lines())
        throw std::runtime_error("the shop file " + file.string() +
                                 " does not hold what it should; delete it and start again");
}

}  // namespace

fs::path shop_of(const fs::path& folder, const Sizes& sizes) {
    const fs::path file =
        folder / fmt::format("shop-{}-{}-{:08x}.db", sizes.invoices, edition, schema_mark());
    fs::create_directories(folder);
    const Alone alone(folder);
    if (!fs::exists(file)) {
        remove_older(folder, fmt::format("shop-{}-", sizes.invoices));
        const fs::path half = folder / "half-made.db";
        for (const char* ending : {"", "-wal", "-shm"})
            fs::remove(half.string() + ending);
        make_shop(half, sizes);
        fs::rename(half, file);
    }
    check_rows(file, sizes);
    return file;
}

Counted count_rows(const fs::path& shop) {
    const auto connection = database::open_embedded(shop);
    const auto count = [&](database::Fragment statement) {
        return database::integer_of(connection->scalar(statement));
    };
    return {count("select count(*) from items"), count("select count(*) from stk"),
            count("select count(*) from sales"), count("select count(*) from saledata"),
            static_cast<double>(fs::file_size(shop)) / 1e6};
}

namespace {

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
