// Goods moved from another store into the selling store for one line of a sale.
#pragma once

#include <cstdint>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace stock {

struct TransferOrder {
    std::int64_t item = 0;
    double quantity = 0;  // in the line's unit
    double factor = 1;    // base units in that unit
    int unit_code = 1;
    std::int64_t source_store = 0;
    std::int64_t selling_store = 0;
    common::Date date;  // of the invoice
};

struct TransferredBatch {
    common::Date expiry;
    double quantity = 0;  // base units
};
struct Transfer {
    std::int64_t number = 0;
    std::vector<TransferredBatch> batches;
};

// Records one transfer with its line and its batches, oldest expiry first, and moves the stock of both
// stores. What no batch of the source covers is moved under the date without expiry. Nothing is checked
// again: if stock left meanwhile, the source's quantity becomes negative.
Transfer transfer_for_line(database::Connection& connection, const TransferOrder& order);

// Takes such a transfer back: the goods return to the batches that they came from, and its rows go. The rows
// of tmp_tran no longer say which, because each start of a till overwrites their dates.
void undo_transfer(database::Connection& connection, const Transfer& transfer, const TransferOrder& order);

}  // namespace stock
