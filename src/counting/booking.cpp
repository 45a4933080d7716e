#include "counting/booking.h"

#include <algorithm>
#include <iterator>

#include "counting/messages.h"
#include "counting/stock_moves.h"
#include "database/bulk_insert.h"
#include "database/next_number.h"
#include "database/transaction.h"

namespace counting {

using common::Refusal;
using database::BulkInsert;
using database::BulkRows;
using database::Connection;
using database::quoted;
using database::Sql;
using database::Value;

namespace {

Value cell_of(const std::optional<common::Date>& date) {
    return date ? Value(common::Moment{*date, {}}) : Value(database::Null{});
}

// Returns false if the count is closed.
bool close(Connection& connection, const signin::Session& session, const common::Moment& now,
           const Count& count, bool booked) {
    return connection.execute(Sql("update till_count set closed = ") + quoted(now) +
                              ", closed_by = " + session.user_code + ", booked = " + (booked ? 1 : 0) +
                              " where num = " + count.number + " and closed is null") > 0;
}

void write_corrections(Connection& connection, const signin::Session& session, const common::Moment& now,
                       const Count& count, const std::vector<Difference>& differences) {
    std::vector<StockMove> moves;
    BulkInsert corrections(connection, Sql("insert into modify (icode,stcode,[date],quan,edate,[user])"), 6,
                           BulkRows::many);
    for (const Difference& one : differences) {
        if (one.surplus() == 0) continue;
        moves.push_back({one.item, one.expiry, one.surplus()});
        corrections.add({one.item, count.store, now, one.surplus(),
                         cell_of(one.expiry.value_or(common::no_expiry)), session.user_code});
    }
    corrections.finish();
    move_stock(connection, count.store, moves);
}

void write_missing(Connection& connection, const signin::Session& session, const Count& count,
                   const std::vector<Difference>& missing) {
    auto number = database::next_number(
        connection, Sql("select max(num) as last_ from till_count_line where cnum = ") + count.number);
    BulkInsert lines(connection,
                     Sql("insert into till_count_line "
                         "(cnum,num,icode,edate,quan,scode,stock,cost,kind,moment,user_code,computer)"),
                     12, BulkRows::many);
    for (const Difference& one : missing)
        lines.add({count.number, number++, one.item, cell_of(one.expiry), 0.0, std::int64_t{1}, one.stock,
                   one.cost, static_cast<std::int64_t>(LineKind::missing), one.moment, session.user_code,
                   session.computer_name});
    lines.finish();
}

void note(const signin::Session& session, const Count& count, const std::vector<Difference>& differences) {
    const Totals totals = totals_of(differences);
    session.note({.kind = audit::Kind::stock_counted,
                  // The stock-taking's number, its store, how many items, surplus and shortage.
                  .what = "جرد رقم " + std::to_string(count.number) + " · " + count.store_name + " · أصناف " +
                          std::to_string(totals.items) + " · زيادة " + totals.surplus.text() + " · عجز " +
                          totals.shortage.text(),
                  .amount = totals.net()});
}

}  // namespace

std::optional<Refusal> book_count(Connection& connection, const signin::Session& session,
                                  common::Clock& clock, const Count& count, bool missing_are_gone) {
    std::optional<Refusal> refusal;
    std::vector<Difference> found;
    database::in_transaction(connection, [&] {
        refusal.reset();
        const common::Moment now = clock.now();
        database::hold_numbers(connection);  // so that nobody adds a line meanwhile
        std::vector<Difference> missing;
        if (missing_are_gone) missing = read_missing(connection, count, now);
        found = read_differences(connection, count);
        if (found.empty() && missing.empty()) {
            refusal.emplace("", message::nothing_counted);
            return;
        }
        if (!close(connection, session, now, count, true)) {
            refusal.emplace("", message::count_closed);
            return;
        }
        write_missing(connection, session, count, missing);
        std::ranges::move(missing, std::back_inserter(found));
        write_corrections(connection, session, now, count, found);
    });
    if (refusal) return refusal;
    connection.make_durable();
    note(session, count, found);
    return std::nullopt;
}

std::optional<Refusal> give_up_count(Connection& connection, const signin::Session& session,
                                     common::Clock& clock, const Count& count) {
    if (!close(connection, session, clock.now(), count, false)) return Refusal("", message::count_closed);
    connection.make_durable();
    return std::nullopt;
}

}  // namespace counting
