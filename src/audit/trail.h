// The till's journal (table till_journal): what cashiers did that a shop keeper wants to see, in rows that
// are only ever added. An event is noted in memory and in a file of the till, without asking the database,
// and the rows are written together later. The table's rows of one till form a chain: each holds a hash of
// itself and of the row before it (audit/chain.h). A shop without the table keeps no journal.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "audit/chain.h"
#include "common/clock.h"
#include "database/connection.h"

namespace audit {

// Events on their way to the table. It holds no part of the trail, so that another thread may write it.
class Batch {
  public:
    // Appends its rows to the table; a row that was written before is not written again. Trail::finish()
    // learns how far it got. Throws Error if the database failed.
    void write(database::Connection& connection);

  private:
    friend class Trail;
    void find_end(database::Connection& connection);

    std::int64_t till_ = 0;
    End end_;
    bool is_end_known_ = false;
    std::vector<Entry> entries_;
    std::size_t done_ = 0;  // of the entries
    bool has_table_ = true;
};

class Trail {
  public:
    // Begins to keep the events of a till, with those that an earlier run left in the till's file. Before it,
    // note() does nothing.
    void open(std::int64_t till, const Place& place, common::Clock& clock);
    bool is_open() const { return clock_ != nullptr; }

    // Notes an event of a user in a store. Never throws.
    void note(const Event& event, const Person& user, std::int64_t store);

    bool has_pending() const { return !pending_.empty(); }
    // What to write next. finish() must be called afterwards, whether it failed or not, to tell the trail how
    // far it got.
    Batch batch() const;
    void finish(const Batch& batch);
    // Writes what is pending at once.
    void write(database::Connection& connection);

  private:
    std::int64_t till_ = 0;
    std::filesystem::path file_;
    common::Clock* clock_ = nullptr;
    End end_;
    bool is_end_known_ = false;  // otherwise it is read from the table before the next row is written
    bool has_table_ = true;
    std::vector<Entry> pending_;
};

}  // namespace audit
