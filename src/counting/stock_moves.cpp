#include "counting/stock_moves.h"

#include <algorithm>
#include <set>
#include <span>

#include "sales/stock_movement.h"

namespace counting {

namespace {

// This many are read and written together: few round trips, and little time for a till to change one of them.
constexpr std::size_t moves_at_once = 200;

void move_some(database::Connection& connection, std::int64_t store, std::span<const StockMove> moves) {
    std::set<std::int64_t> items;
    for (const StockMove& move : moves)
        items.insert(move.item);
    sales::StockBatches batches(connection, store, std::move(items));
    sales::StockPlan plan;
    for (const StockMove& move : moves) {
        if (move.by > 0)
            batches.put(move.item, move.by, move.expiry, plan);
        else if (move.by < 0)
            batches.take(move.item, -move.by, plan, move.expiry);
    }
    connection.run_all(plan.commands);
}

}  // namespace

void move_stock(database::Connection& connection, std::int64_t store, const std::vector<StockMove>& moves) {
    const std::span all(moves);
    for (std::size_t at = 0; at < all.size(); at += moves_at_once)
        move_some(connection, store, all.subspan(at, std::min(moves_at_once, all.size() - at)));
}

}  // namespace counting
