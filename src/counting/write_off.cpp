#include "counting/write_off.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "counting/messages.h"
#include "counting/stock_moves.h"
#include "database/bulk_insert.h"
#include "database/choices.h"
#include "database/next_number.h"
#include "database/transaction.h"
#include "goods/cost.h"
#include "sales/items.h"
#include "sales/line_editing.h"

namespace counting {

using common::Refusal;
using database::Connection;
using database::quoted;
using database::Sql;

namespace {

// What the reason of a counter entry begins with, before the number of the report: "counter entry to report
// ".
constexpr std::string_view reversal_of = "عكس محضر ";
// What follows the number.
constexpr std::string_view reversal_end = " · ";

// Less than any scale weighs.
constexpr double tolerance = 1e-6;

// What the batch of a line, or the whole item, holds in the store less what other lines take.
double left_for(Connection& connection, std::int64_t store, const WriteOffLine& line,
                const std::vector<WriteOffLine>& others) {
    double all = 0;
    double batch = 0;
    for (const Batch& one : read_batches(connection, store, line.item)) {
        all += one.held;
        if (line.expiry == one.expiry) batch += one.held;
    }
    for (const WriteOffLine& other : others) {
        if (other.item != line.item) continue;
        all -= other.quantity;
        if (other.expiry == line.expiry) batch -= other.quantity;
    }
    return line.expiry ? std::min(all, batch) : all;
}

std::optional<Refusal> check_stock(Connection& connection, std::int64_t store, const WriteOffLine& line,
                                   const std::vector<WriteOffLine>& others) {
    const double left = left_for(connection, store, line, others);
    if (line.quantity <= left + tolerance) return std::nullopt;
    return Refusal("write_off_quantity",
                   std::string(message::not_so_many) + common::shortest_text(left) + "\n" + line.name);
}

// Writes the rows of a report and moves the stock, in the caller's transaction.
std::int64_t write(Connection& connection, const common::Moment& now, std::int64_t store,
                   const std::vector<WriteOffLine>& lines) {
    const std::int64_t number = database::next_number(connection, "select max(bnum) as last_ from bad_data");
    database::BulkInsert rows(connection,
                              Sql("insert into bad_data (bnum,[date],icode,stcode,quan,edate,note)"), 7,
                              database::BulkRows::many);
    std::vector<StockMove> moves;
    for (const WriteOffLine& line : lines) {
        const common::Moment expiry{line.expiry.value_or(common::no_expiry), {}};
        rows.add({number, now, line.item, store, line.quantity, expiry, line.reason});
        moves.push_back({line.item, line.expiry, -line.quantity});
    }
    rows.finish();
    move_stock(connection, store, moves);
    return number;
}

void note(const signin::Session& session, std::int64_t number, const std::vector<WriteOffLine>& lines) {
    common::Amount value;
    for (const WriteOffLine& line : lines)
        value += line.value();
    session.note({.kind = audit::Kind::goods_written_off,
                  // Report number …, its first item, how many lines.
                  .what = "محضر رقم " + std::to_string(number) + " · " + lines.front().name + " · " +
                          lines.front().reason + " · أصناف " + std::to_string(lines.size()),
                  .amount = value});
}

WriteOffRow row_of(const database::Row& row) {
    WriteOffRow read;
    read.number = row.integer("bnum");
    read.moment = row.moment("date");
    read.store = row.integer("stcode");
    read.store_name = row.text("store_name");
    read.line = {row.integer("icode"),     row.text("name"), row.number("quan"),
                 row.moment("edate").date, row.text("note"), row.number("price11")};
    return read;
}

Sql rows_statement() {
    return Sql(
        "select bad_data.*, items.[name], items.price11, stocks.[name] as store_name from bad_data left "
        "join items on bad_data.icode = items.code left join stocks on bad_data.stcode = stocks.code ");
}

// The counter entry of a report, made of its rows; or why there is none.
std::variant<std::vector<WriteOffLine>, Refusal> reversal(Connection& connection, std::int64_t number,
                                                          std::int64_t& store) {
    const std::string beginning =
        std::string(reversal_of) + std::to_string(number) + std::string(reversal_end);
    if (connection.scalar(Sql("select count(*) from bad_data where left(note, ") +
                          static_cast<std::int64_t>(common::length(beginning)) +
                          ") = " + quoted(beginning)) != database::Value(std::int64_t{0}))
        return Refusal("", message::already_reversed);
    std::vector<WriteOffLine> lines;
    for (const auto& row : connection.query(rows_statement() + "where bad_data.bnum = " + number)) {
        WriteOffRow read = row_of(row);
        if (read.line.reason.starts_with(reversal_of)) return Refusal("", message::is_reversal);
        store = read.store;
        read.line.quantity = -read.line.quantity;
        read.line.reason = beginning + read.line.reason;
        lines.push_back(std::move(read.line));
    }
    if (lines.empty()) return Refusal("", message::nothing_to_write_off);
    return lines;
}

}  // namespace

std::vector<Batch> read_batches(Connection& connection, std::int64_t store, std::int64_t item) {
    std::map<common::Date, double> held;
    for (const auto& row :
         connection.query(Sql("select * from stk where icode = ") + item + " and stcode = " + store))
        held[expiry_of(row)] += row.number("quan");
    std::vector<Batch> batches;
    for (const auto& [expiry, quantity] : held)
        if (std::abs(quantity) > tolerance) batches.push_back({expiry, quantity});
    return batches;
}

std::variant<WriteOffLine, Refusal> write_off_line(Connection& connection, std::int64_t store,
                                                   const WrittenOff& typed,
                                                   const std::vector<WriteOffLine>& before) {
    const auto quantity = common::read_number(typed.quantity, message::wrong_quantity);
    if (!quantity.is_good()) return Refusal("write_off_quantity", quantity.refusal);
    const auto item = sales::load_item(connection, typed.item, typed.unit_level);
    if (!item) return Refusal("write_off_item", message::no_such_item);
    if (item->sale_only) return Refusal("write_off_item", message::is_service);
    if (item->factor <= 0) return Refusal("write_off_item", message::no_unit);
    WriteOffLine line;
    line.item = item->code;
    line.name = item->name;
    line.quantity = common::round_decimals(quantity.value, 3) * item->factor;
    line.expiry = typed.expiry;
    line.reason = common::trim(typed.reason);
    if (line.quantity <= 0) return Refusal("write_off_quantity", message::quantity_above_zero);
    if (line.quantity > sales::largest_quantity)
        return Refusal("write_off_quantity", message::quantity_too_large);
    if (line.reason.empty() || line.reason.starts_with(reversal_of))
        return Refusal("write_off_reason", message::enter_reason);
    // A counter entry puts its own words before the reason.
    const std::string longest =
        std::string(reversal_of) + "4000000000" + std::string(reversal_end) + line.reason;
    if (!database::TextLimits(connection, "bad_data").fits("note", longest))
        return Refusal("write_off_reason", common::message::text_too_long);
    line.cost =
        database::number_of(connection.scalar(Sql("select price11 from items where code = ") + item->code));
    if (auto refusal = check_stock(connection, store, line, before)) return *refusal;
    return line;
}

std::variant<std::int64_t, Refusal> write_off(Connection& connection, const signin::Session& session,
                                              common::Clock& clock, std::int64_t store,
                                              const std::vector<WriteOffLine>& lines) {
    if (lines.empty()) return Refusal("write_off_item", message::nothing_to_write_off);
    std::int64_t number = 0;
    std::optional<Refusal> refusal;
    database::in_transaction(connection, [&] {
        refusal.reset();
        database::hold_numbers(connection);
        std::vector<WriteOffLine> before;
        for (const WriteOffLine& line : lines) {
            refusal = check_stock(connection, store, line, before);
            if (refusal) return;
            before.push_back(line);
        }
        number = write(connection, clock.now(), store, lines);
    });
    if (refusal) return *refusal;
    connection.make_durable();
    note(session, number, lines);
    return number;
}

std::vector<WriteOffRow> read_write_offs(Connection& connection, const common::Date& from,
                                         const common::Date& to, std::optional<std::int64_t> store) {
    Sql statement = rows_statement() + "where bad_data.[date] >= " + quoted(from) +
                    " and bad_data.[date] < " + quoted(common::add_days(to, 1));
    if (store) statement += Sql(" and bad_data.stcode = ") + *store;
    std::vector<WriteOffRow> rows;
    for (const auto& row : connection.query(statement + " order by bad_data.[date] desc, bad_data.bnum desc"))
        rows.push_back(row_of(row));
    if (rows.empty()) return rows;
    const goods::Costs costs(connection, {from, {}});
    for (WriteOffRow& row : rows)
        row.line.cost = costs.of(row.line.item, row.moment);
    return rows;
}

common::Amount value_of(const std::vector<WriteOffRow>& rows) {
    common::Amount sum;
    for (const WriteOffRow& row : rows)
        sum += row.line.value();
    return sum;
}

std::variant<std::int64_t, Refusal> reverse_write_off(Connection& connection, const signin::Session& session,
                                                      common::Clock& clock, std::int64_t number) {
    std::variant<std::vector<WriteOffLine>, Refusal> entry = std::vector<WriteOffLine>();
    std::int64_t written = 0;
    database::in_transaction(connection, [&] {
        database::hold_numbers(connection);
        std::int64_t store = 0;
        entry = reversal(connection, number, store);
        if (const auto* lines = std::get_if<std::vector<WriteOffLine>>(&entry))
            written = write(connection, clock.now(), store, *lines);
    });
    if (const auto* refusal = std::get_if<Refusal>(&entry)) return *refusal;
    connection.make_durable();
    note(session, written, std::get<std::vector<WriteOffLine>>(entry));
    return written;
}

}  // namespace counting
