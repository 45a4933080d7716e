#include "stock/transfer.h"

#include <algorithm>

#include "common/numbers.h"
#include "database/next_number.h"

namespace stock {

using common::Date;
using database::Connection;
using database::quoted;
using database::Sql;

namespace {

// Finer than any scale weighs.
constexpr int quantity_decimals = 6;

void record_batch(Connection& connection, Transfer& transfer, const TransferOrder& order, const Date& expiry,
                  double quantity) {
    transfer.batches.push_back({expiry, quantity});
    connection.execute(Sql("INSERT INTO tmp_tran (tnum,icode,edate,quan,stcode,stcode1) select ") +
                       transfer.number + " , " + order.item + " , " + quoted(expiry) + " , " + quantity +
                       " , " + order.source_store + " , " + order.selling_store);
}

// Splits the base quantity over the source's batches, oldest first.
void record_batches(Connection& connection, Transfer& transfer, const TransferOrder& order) {
    double left = order.quantity * order.factor;
    for (const auto& row : connection.query(Sql("select * from stk where icode = ") + order.item +
                                            " and stcode = " + order.source_store + " order by edate")) {
        if (left <= 0) return;
        const double held = row.number("quan");
        if (held <= 0) continue;  // an empty or overdrawn batch has nothing to give
        const double taken = std::min(held, left);
        record_batch(connection, transfer, order,
                     row.null("edate") ? common::no_expiry : row.moment("edate").date, taken);
        // Rounded, so that the error of binary sums does not end up in a batch of its own.
        left = common::round_decimals(left - taken, quantity_decimals);
    }
    if (left > 0) record_batch(connection, transfer, order, common::no_expiry, left);
}

// Adds the batch of a store if it is missing. The source needs it too, or a quantity taken under the date
// without expiry would not be subtracted anywhere.
void ensure_batch(Connection& connection, std::int64_t item, std::int64_t store, const Date& expiry) {
    const auto found = connection.query(Sql("select * from stk where icode = ") + item +
                                        " and stcode = " + store + " and edate = " + quoted(expiry));
    if (!found.empty()) return;
    connection.execute(Sql("INSERT INTO stk (icode,edate,stcode,quan) select ") + item + " , " +
                       quoted(expiry) + " , " + store + " , " + 0);
}

void add_to_batch(Connection& connection, std::int64_t item, std::int64_t store, const Date& expiry,
                  double quantity) {
    connection.execute(Sql("update stk set quan = IsNull([quan], 0) + ") + quantity +
                       " where icode = " + item + " and edate =" + quoted(expiry) + " and stcode = " + store);
}

Sql rows_of(std::int64_t number, const TransferOrder& order) {
    return Sql(" where tnum = ") + number + " and icode = " + order.item +
           " and stcode = " + order.source_store + " and stcode1 = " + order.selling_store;
}

void apply_batches(Connection& connection, std::int64_t number) {
    for (const auto& batch : connection.query(Sql("select * from tmp_tran where tnum = ") + number)) {
        const std::int64_t item = batch.integer("icode");
        const Date expiry = batch.moment("edate").date;
        const double quantity = batch.number("quan");
        const std::int64_t source = batch.integer("stcode");
        const std::int64_t selling = batch.integer("stcode1");

        ensure_batch(connection, item, source, expiry);
        connection.execute(Sql("update stk set quan = IsNull([quan], 0) - ") + quantity + " where icode = " +
                           item + " and edate =" + quoted(expiry) + " and stcode = " + source);

        const auto held = connection.query(Sql("select * from stk where icode = ") + item +
                                           " and stcode = " + selling + " and edate = " + quoted(expiry));
        if (held.empty()) {
            connection.execute(Sql("INSERT INTO stk (icode,edate,stcode,quan) select ") + item + " , " +
                               quoted(expiry) + " , " + selling + " , " + quantity);
        } else {
            add_to_batch(connection, item, selling, expiry, quantity);
        }
    }
}

}  // namespace

Transfer transfer_for_line(Connection& connection, const TransferOrder& order) {
    Transfer transfer;
    transfer.number = database::next_number(connection, "select max(tnum) as last_ from sttran");
    connection.execute(Sql("INSERT INTO sttran (tnum,tdate,tfrom,tto) select ") + transfer.number + " , " +
                       quoted(order.date) + " ," + order.source_store + "," + order.selling_store);
    connection.execute(
        Sql("INSERT INTO transdata (tnum,tdate,icode,quan1,scode,stcode,stcode1,quan) select ") +
        transfer.number + " , " + quoted(order.date) + " , " + order.item + " , " + order.quantity + " , " +
        order.unit_code + " , " + order.source_store + " , " + order.selling_store + " , " +
        order.quantity * order.factor);
    record_batches(connection, transfer, order);
    apply_batches(connection, transfer.number);
    return transfer;
}

void undo_transfer(Connection& connection, const Transfer& transfer, const TransferOrder& order) {
    for (const TransferredBatch& batch : transfer.batches) {
        ensure_batch(connection, order.item, order.source_store, batch.expiry);
        ensure_batch(connection, order.item, order.selling_store, batch.expiry);
        add_to_batch(connection, order.item, order.source_store, batch.expiry, batch.quantity);
        add_to_batch(connection, order.item, order.selling_store, batch.expiry, -batch.quantity);
    }
    connection.execute(Sql("delete from tmp_tran") + rows_of(transfer.number, order));
    connection.execute(Sql("delete from transdata") + rows_of(transfer.number, order));
    connection.execute(Sql("delete from sttran where tnum = ") + transfer.number +
                       " and tfrom = " + order.source_store + " and tto = " + order.selling_store);
}

}  // namespace stock
