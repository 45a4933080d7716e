#include "sales/stock_movement.h"

#include <algorithm>
#include <cmath>

#include "database/recordset.h"

namespace sales {

using common::Date;
using database::Connection;
using database::quoted;
using database::Recordset;
using database::Sql;

namespace {

// Binary sums of decimal quantities are off by some 1e-16, so that six times a tenth would not quite empty a
// batch of six tenths. A rest far below a gram counts as nothing.
double without_residue(double quantity) {
    constexpr double residue = 1e-9;
    return std::abs(quantity) < residue ? 0 : quantity;
}

// " and edate = ..." for a batch with or without a date.
Sql of_batch(const std::optional<Date>& expiry) {
    return expiry ? Sql(" and edate = ") + quoted(*expiry) : Sql(" and edate is null");
}

// Adds to the batch of an expiry date (a negative quantity takes from it), which is added if it is missing.
StockChange move_batch(Connection& connection, std::int64_t item, std::int64_t store,
                       const std::optional<Date>& expiry, double quantity) {
    Recordset batch(connection, Sql("select * from stk where icode = ") + item + " and stcode = " + store +
                                    of_batch(expiry));
    const StockChange change{item, expiry, quantity, batch.at_end()};
    if (change.adds_batch) {
        batch.add();
        batch.set("icode", item);
        batch.set("stcode", store);
        if (expiry) batch.set("edate", *expiry);
        batch.set("quan", quantity);
    } else {
        batch.set("quan", without_residue(batch.number("quan") + quantity));
    }
    batch.update();
    return change;
}

}  // namespace

Recordset& StockBatches::batches_of(std::int64_t item) {
    const auto known = batches_.find(item);
    if (known != batches_.end()) return known->second;
    const Sql statement = Sql("select * from stk where icode = ") + item + " order by edate";
    return batches_.try_emplace(item, connection_, statement).first->second;
}

bool StockBatches::is_held(Recordset& batch) const {
    return batch.integer("stcode") == store_ && batch.number("quan") > 0;
}

std::optional<Date> StockBatches::oldest(std::int64_t item) {
    Recordset& batches = batches_of(item);
    for (batches.move_first(); !batches.at_end(); batches.move_next())
        if (is_held(batches) && !batches.null("edate")) return batches.moment("edate").date;
    return std::nullopt;
}

double StockBatches::held(std::int64_t item) {
    Recordset& batches = batches_of(item);
    double sum = 0;
    for (batches.move_first(); !batches.at_end(); batches.move_next())
        if (batches.integer("stcode") == store_) sum += batches.number("quan");
    return sum;
}

void StockBatches::take_from_batches(std::int64_t item, double& left, StockChanges& done) {
    Recordset& batches = batches_of(item);
    for (batches.move_first(); left > 0 && !batches.at_end(); batches.move_next()) {
        if (!is_held(batches)) continue;
        const double held = batches.number("quan");
        const double taken = std::min(held, left);
        batches.set("quan", without_residue(held - taken));
        batches.update();
        left = without_residue(left - taken);
        done.push_back({item,
                        batches.null("edate") ? std::nullopt : std::optional(batches.moment("edate").date),
                        -taken, false});
    }
}

void StockBatches::take(std::int64_t item, double quantity, StockChanges& done) {
    double left = quantity;
    const bool known = batches_.contains(item);
    take_from_batches(item, left, done);
    if (left <= 0) return;
    // Goods may have come in since the batches were read.
    forget(item);
    if (known) take_from_batches(item, left, done);
    if (left > 0) done.push_back(move_batch(connection_, item, store_, common::no_expiry, -left));
    forget(item);
}

StockChange put_into_stock(Connection& connection, std::int64_t item, std::int64_t store, double quantity,
                           const std::optional<Date>& expiry) {
    Date into = expiry.value_or(common::no_expiry);
    if (!expiry) {
        for (const auto& batch :
             connection.query(Sql("select * from stk where icode = ") + item + " order by edate desc")) {
            if (batch.integer("stcode") != store || batch.null("edate")) continue;
            into = batch.moment("edate").date;
            break;
        }
    }
    return move_batch(connection, item, store, into, quantity);
}

void undo(Connection& connection, std::int64_t store, const StockChange& change) {
    move_batch(connection, change.item, store, change.expiry, -change.quantity);
    if (!change.adds_batch) return;
    connection.execute(Sql("delete from stk where icode = ") + change.item + " and stcode = " + store +
                       of_batch(change.expiry) + " and quan = 0");
}

}  // namespace sales
