// The chain of a till's journal. The hash of a row is SHA-256 over its content, its number and the hash of
// the row before it. It shows that a row was changed by hand, removed from the middle, or put in. Rows that
// were removed at the end show as a gap once the till writes its next row, because the till counts by its own
// file. Whoever can run this program's code can write a new chain as a whole: the hash is no signature.
#pragma once

#include <cstdint>
#include <functional>

#include "audit/entry.h"
#include "audit/trail_file.h"
#include "database/connection.h"

namespace audit {

// The end that the chain has with one more row.
End after(const End& end, std::int64_t till, const Entry& entry);

// The row of the table, and back.
database::Command insertion(const End& end, std::int64_t till, const Entry& entry);
Entry entry_of(const database::Row& row);

// Where a till's chain is broken first.
struct Break {
    std::int64_t till = 0;
    std::int64_t number = 0;   // of the row; of the next one if the last rows are missing
    std::int64_t missing = 0;  // rows that are missing before it; 0 if the row itself was changed
    common::Moment moment;     // of the row, or of the last one that is there
    bool is_end = false;       // the last rows are missing
};
// Reads every row and calls `found` for the first break of each till. `place` belongs to a till; its file
// knows where its chain ends. Returns the number of rows.
std::int64_t verify(database::Connection& connection, const Place& place,
                    const std::function<void(const Break&)>& found);

}  // namespace audit
