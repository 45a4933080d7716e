// The chain of a till's journal. The hash of a row is SHA-256 over its content, its number and the hash of
// the row before it. It reveals rows that were changed by hand, removed from the middle or inserted. Rows
// removed at the end show as a gap once the till writes its next row, because the till keeps count in its own
// file. The hash is not a signature: whoever can run this program's code can write a whole new chain.
#pragma once

#include <cstdint>
#include <functional>

#include "audit/entry.h"
#include "audit/trail_file.h"
#include "database/connection.h"

namespace audit {

// The end of the chain after one more row.
End after(const End& end, std::int64_t till, const Entry& entry);

// The statement that writes an entry as a row, and the entry of a row.
database::Command insertion(const End& end, std::int64_t till, const Entry& entry);
Entry entry_of(const database::Row& row);

// The first break in a till's chain.
struct Break {
    std::int64_t till = 0;
    std::int64_t number = 0;   // of the row; of the next one if the last rows are missing
    std::int64_t missing = 0;  // rows that are missing before it; 0 if the row itself was changed
    common::Moment moment;     // of the row, or of the last one that exists
    bool is_end = false;       // the last rows are missing
};
// Reads every row and calls `found` for the first break of each till. `place` belongs to a till; its file
// knows where its chain ends. Returns the number of rows.
std::int64_t verify(database::Connection& connection, const Place& place,
                    const std::function<void(const Break&)>& found);

}  // namespace audit
