#include "bench/plain.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

#include "bench/rows.h"
#include "bench/shop_data.h"

namespace bench {

namespace fs = std::filesystem;

namespace {

void check(sqlite3* db, int code) {
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(db));
}

void run(sqlite3* db, const char* statement) {
    check(db, sqlite3_exec(db, statement, nullptr, nullptr, nullptr));
}

sqlite3_stmt* prepare(sqlite3* db, const char* text) {
    sqlite3_stmt* statement = nullptr;
    check(db, sqlite3_prepare_v3(db, text, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
    return statement;
}

std::int64_t seconds(const common::Moment& moment) {
    return common::days_from_epoch(moment.date) * 86400LL + moment.time.hour * 3600 +
           moment.time.minute * 60 + moment.time.second;
}

// A statement with its values bound, run to its first row.
class Run {
  public:
    template <typename... Values>
    explicit Run(sqlite3_stmt* statement, Values... values) : statement_(statement) {
        int index = 0;
        (bind(++index, values), ...);
        row_ = sqlite3_step(statement_) == SQLITE_ROW;
    }
    ~Run() { sqlite3_reset(statement_); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    bool row() const { return row_; }
    void next() { row_ = sqlite3_step(statement_) == SQLITE_ROW; }
    double number(int column) const { return sqlite3_column_double(statement_, column); }
    std::int64_t whole(int column) const { return sqlite3_column_int64(statement_, column); }

  private:
    void bind(int index, std::int64_t value) { sqlite3_bind_int64(statement_, index, value); }
    void bind(int index, int value) { sqlite3_bind_int64(statement_, index, value); }
    void bind(int index, double value) { sqlite3_bind_double(statement_, index, value); }
    void bind(int index, const std::string& value) {
        sqlite3_bind_text(statement_, index, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
    }
    sqlite3_stmt* statement_;
    bool row_ = false;
};

constexpr const char* plain_schema =
    "pragma journal_mode=wal; pragma synchronous=off;"
    "create table items(code integer primary key, name text, price real, factor real);"
    "create table stk(id integer primary key, item int, store int, expiry int, quantity real);"
    "create table sales(id integer primary key, pnum int, vcode int, moment int, ctype int, stype int, ptot "
    "real,"
    " pdis real, store int, drawer int, disboun real, shift int, safe int);"
    "create table saledata(id integer primary key, pnum int, ctype int, serial int, item int, name text,"
    " quantity real, price real, base real);"
    "create table shift(store int, drawer int, code int, ended int); insert into shift values(1,1,1,null);"
    "create table basic(name text, maximum real); insert into basic values('x',10);"
    "create table moves(kind int, sign int, moment int, drawer int, amount real);";

constexpr const char* plain_indexes =
    "create index items_name on items(name); create index stk_item on stk(item,store,expiry);"
    "create index sales_sum on sales(store,drawer,vcode,ctype,stype,moment,ptot,disboun);"
    "create index sales_number on sales(vcode,ctype,pnum); create index saledata_number on "
    "saledata(pnum,ctype);"
    "create index moves_sum on moves(drawer,kind,sign,moment,amount); pragma synchronous=normal;";

}  // namespace

fs::path plain_shop_of(const fs::path& folder, const Sizes& sizes) {
    const fs::path file = folder / fmt::format("plain-{}.db", sizes.invoices);
    if (fs::exists(file)) return file;
    fs::create_directories(folder);
    const fs::path half = folder / "half-made-plain.db";
    for (const char* ending : {"", "-wal", "-shm"})
        fs::remove(half.string() + ending);
    sqlite3* db = nullptr;
    check(db, sqlite3_open(half.c_str(), &db));
    run(db, plain_schema);
    run(db, "begin");
    auto* item = prepare(db, "insert into items values(?,?,?,1)");
    for (int code = 1; code <= sizes.items; ++code)
        Run(item, code, fmt::format("صنف {} رقم {}", noise(static_cast<std::uint64_t>(code)) % 977, code),
            10.0);
    auto* stk = prepare(db, "insert into stk values(?,?,1,?,1e6)");
    for (int row = 1; row <= sizes.stock_rows; ++row)
        Run(stk, row, 1 + (row - 1) % sizes.items, row / sizes.items);
    auto* sale = prepare(db, "insert into sales values(?,?,?,?,?,?,?,0,1,?,?,1,0)");
    auto* line = prepare(db, "insert into saledata values(null,?,?,?,?,'صنف',1,?,1)");
    for (std::int64_t number = 1; number <= sizes.invoices; ++number) {
        const InvoiceRow row = invoice_row(sizes, number);
        Run(sale, number, number, row.vcode, seconds(row.moment), row.ctype, row.stype, row.total, row.drawer,
            row.disboun);
        for (int serial = 1; serial <= sizes.lines_per_invoice; ++serial)
            Run(line, number, row.ctype, serial,
                static_cast<std::int64_t>(1 + noise(static_cast<std::uint64_t>(number)) %
                                                  static_cast<unsigned>(sizes.items)),
                row.total / sizes.lines_per_invoice);
    }
    auto* move = prepare(db, "insert into moves values(?,?,?,?,?)");
    for (std::int64_t number = 1; number <= movements(sizes); ++number) {
        const MovementRow row = movement_row(sizes, number);
        for (int kind = 0; kind < 4; ++kind)
            Run(move, kind, kind == 3 ? 0 : row.kind, seconds(row.moment), row.drawer, row.amount);
    }
    run(db, "commit");
    run(db, plain_indexes);
    for (auto* statement : {item, stk, sale, line, move})
        sqlite3_finalize(statement);
    check(db, sqlite3_close(db));
    fs::rename(half, file);
    return file;
}

struct PlainTill::Statements {
    sqlite3_stmt *shift, *basic, *stock, *number, *header, *line, *batches, *take, *opening, *search,
        *look_up;
    std::vector<std::pair<int, sqlite3_stmt*>> sums;  // sign, sum before a moment
    std::vector<sqlite3_stmt*> all;
};

PlainTill::PlainTill(const fs::path& file)
    : prepared_(std::make_unique<Statements>()), wal_(file.string() + "-wal") {
    check(db_, sqlite3_open(file.c_str(), &db_));
    run(db_, "pragma journal_mode=wal; pragma synchronous=normal;");
    auto& p = *prepared_;
    const auto make = [&](const char* text) {
        p.all.push_back(prepare(db_, text));
        return p.all.back();
    };
    p.shift = make("select code from shift where store=1 and drawer=1 and ended is null");
    p.basic = make("select * from basic");
    p.stock = make("select sum(quantity) from stk where item=? and store=1");
    p.number = make("select max(pnum) from sales where vcode=-1 and ctype=0");
    p.header = make("insert into sales values(null,?,-1,?,0,0,?,0,1,1,0,1,0)");
    p.line = make("insert into saledata values(null,?,0,?,?,'صنف',?,?,?)");
    p.batches = make("select id,quantity from stk where item=? and store=1 and quantity>0 order by expiry");
    p.take = make("update stk set quantity=quantity-? where id=?");
    p.search = make(
        "select i.code,i.name,(select sum(quantity) from stk where item=i.code) from items i where name>=? "
        "and name<? limit 200");
    p.look_up = make(
        "select i.price,(select sum(quantity) from stk where item=i.code and store=1) from items i where "
        "code=?");
    const char* before = "store=1 and drawer=? and vcode=-1 and moment<?";
    const auto sale_sum = [&](int sign, const char* column, const char* condition) {
        p.sums.emplace_back(
            sign,
            make(
                fmt::format("select sum({}) from sales where {} and {}", column, before, condition).c_str()));
    };
    sale_sum(1, "ptot", "ctype in (0,1) and stype<>1");
    sale_sum(-1, "disboun", "ctype in (0,1) and stype=2");
    sale_sum(-1, "disboun", "ctype in (0,1) and stype=3");
    sale_sum(-1, "ptot", "ctype in (0,1) and stype=4 and safe=0");
    sale_sum(-1, "ptot", "ctype in (2,3) and stype<>1");
    sale_sum(1, "disboun", "ctype in (2,3) and stype=3");
    // The two figures of the period, which the program computes along with the position.
    sale_sum(0, "ptot", "ctype in (0,1) and stype=1");
    sale_sum(0, "ptot", "ctype in (2,3) and stype=1");
    for (int kind = 0; kind < 4; ++kind)
        for (int sign = 0; sign < 2; ++sign)
            p.sums.emplace_back(
                sign == 0 ? -1 : 1,
                make(fmt::format(
                         "select sum(amount) from moves where drawer=? and moment<? and kind={} and sign={}",
                         kind, sign)
                         .c_str()));
}

PlainTill::~PlainTill() {
    for (auto* statement : prepared_->all)
        sqlite3_finalize(statement);
    sqlite3_close(db_);
}

void PlainTill::save(const std::vector<PlainLine>& lines) {
    auto& p = *prepared_;
    if (!Run(p.shift).row() || !Run(p.basic).row()) throw std::runtime_error("no shift");
    double total = 0;
    for (const PlainLine& line : lines) {
        if (Run(p.stock, line.item).number(0) < line.quantity) throw std::runtime_error("no stock");
        total += line.quantity * line.price;
    }
    const std::int64_t number = Run(p.number).whole(0) + 1;
    Run(p.header, number, seconds({last_day, {12, 0, 0, 0}}), total);
    int serial = 0;
    for (const PlainLine& line : lines)
        Run(p.line, number, ++serial, line.item, line.quantity, line.price, line.quantity);
    for (const PlainLine& line : lines) {
        double left = line.quantity;
        std::vector<std::pair<std::int64_t, double>> taken;
        for (Run batch(p.batches, line.item); batch.row() && left > 0; batch.next()) {
            taken.emplace_back(batch.whole(0), std::min(left, batch.number(1)));
            left -= taken.back().second;
        }
        for (const auto& [batch, quantity] : taken)
            Run(p.take, quantity, batch);
    }
    const int wal = ::open(wal_.c_str(), O_RDONLY | O_CLOEXEC);
    if (wal < 0 || ::fsync(wal) != 0) throw std::runtime_error("not durable");
    ::close(wal);
}

double PlainTill::sum(sqlite3_stmt* statement, int drawer, std::int64_t moment) {
    return Run(statement, drawer, moment).number(0);
}

double PlainTill::cash_position(int drawer, std::int64_t moment) {
    double position = 100;
    for (const auto& [sign, statement] : prepared_->sums)
        position += sign * sum(statement, drawer, moment);
    return position;
}

std::size_t PlainTill::search(const std::string& prefix) {
    std::size_t found = 0;
    for (Run row(prepared_->search, prefix, prefix + "\xf4\x8f\xbf\xbf"); row.row(); row.next())
        ++found;
    return found;
}

double PlainTill::look_up(std::int64_t item) {
    return Run(prepared_->look_up, item).number(1);
}

}  // namespace bench
