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

}  // namespace

bool StockPlan::adds_batch() const {
    return std::ranges::any_of(changes, &StockChange::adds_batch);
}

void StockBatches::read() {
    Sql statement("select * from stk where icode in (");
    for (auto item = items_.begin(); item != items_.end(); ++item) {
        if (item != items_.begin()) statement += ", ";
        statement += *item;
    }
    rows_.emplace(connection_, statement + ") order by edate");
    batches_.clear();
    for (; !rows_->at_end(); rows_->move_next()) {
        if (rows_->integer("stcode") != store_) continue;
        const auto expiry = rows_->null("edate") ? std::nullopt : std::optional(rows_->moment("edate").date);
        batches_[rows_->integer("icode")].push_back({rows_->position(), expiry, rows_->number("quan")});
    }
}

std::vector<StockBatches::Batch>& StockBatches::batches_of(std::int64_t item) {
    if (!rows_) read();
    return batches_[item];
}

std::optional<Date> StockBatches::oldest(std::int64_t item) {
    for (const Batch& batch : batches_of(item))
        if (batch.quantity > 0 && batch.expiry) return batch.expiry;
    return std::nullopt;
}

double StockBatches::held(std::int64_t item) {
    double sum = 0;
    for (const Batch& batch : batches_of(item))
        sum += batch.quantity;
    return sum;
}

void StockBatches::take(std::int64_t item, double quantity, StockPlan& plan,
                        const std::optional<Date>& first) {
    double left = quantity;
    const auto take_from = [&](Batch& batch) {
        const double taken = std::min(batch.quantity, left);
        if (taken <= 0) return;
        change(item, batch, -taken, plan);
        left = without_residue(left - taken);
    };
    auto& batches = batches_of(item);
    if (first) {
        const auto found = std::ranges::find(batches, first, &Batch::expiry);
        if (found != batches.end()) take_from(*found);
    }
    for (Batch& batch : batches)
        take_from(batch);
    if (left > 0) add(item, -left, common::no_expiry, plan);
}

void StockBatches::put(std::int64_t item, double quantity, const std::optional<Date>& expiry,
                       StockPlan& plan) {
    Date into = expiry.value_or(common::no_expiry);
    if (!expiry)
        for (const Batch& batch : batches_of(item))
            if (batch.expiry) into = *batch.expiry;
    add(item, quantity, into, plan);
}

void StockBatches::add(std::int64_t item, double quantity, const std::optional<Date>& expiry,
                       StockPlan& plan) {
    auto& batches = batches_of(item);
    const auto found = std::ranges::find(batches, expiry, &Batch::expiry);
    if (found != batches.end()) return change(item, *found, quantity, plan);
    rows_->add();
    rows_->set("icode", item);
    rows_->set("stcode", store_);
    if (expiry) rows_->set("edate", *expiry);
    rows_->set("quan", quantity);
    plan.commands.push_back(rows_->take_update());
    plan.changes.push_back({item, expiry, quantity, true});
    batches.push_back({rows_->position(), expiry, quantity});
}

void StockBatches::change(std::int64_t item, Batch& batch, double by, StockPlan& plan) {
    batch.quantity = without_residue(batch.quantity + by);
    rows_->move_to(batch.row);
    rows_->set("quan", batch.quantity);
    plan.commands.push_back(rows_->take_update());
    plan.changes.push_back({item, batch.expiry, by, false});
}

void undo(Connection& connection, std::int64_t store, const StockChange& change) {
    StockBatches batches(connection, store, {change.item});
    StockPlan plan;
    batches.add(change.item, -change.quantity, change.expiry, plan);
    connection.run_all(plan.commands);
    if (!change.adds_batch) return;
    Sql removal = Sql("delete from stk where icode = ") + change.item + " and stcode = " + store;
    if (change.expiry)
        removal += Sql(" and edate = ") + quoted(*change.expiry);
    else
        removal += " and edate is null";
    connection.execute(removal + " and quan = 0");
}

}  // namespace sales
