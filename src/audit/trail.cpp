#include "audit/trail.h"

#include <algorithm>
#include <set>
#include <utility>

#include "common/random.h"
#include "common/text.h"
#include "database/till_tables.h"

namespace audit {

namespace {

// The widths of the table's columns.
constexpr std::size_t longest_what = 400;
constexpr std::size_t longest_name = 100;
constexpr std::size_t most_entries = 200;  // that are written together

std::string fitting(std::string_view text, std::size_t width) {
    return common::cut_to_column(common::printable(text), width);
}

Person fitting(const Person& person) {
    return {person.code, fitting(person.name, longest_name)};
}

}  // namespace

void Batch::find_end(database::Connection& connection) {
    std::set<std::int64_t> written;
    const auto rows =
        connection.query(database::Sql("select top ") + (entries_.size() + 1) +
                         " num, id, hash from till_journal where cash_no = " + till_ + " order by num desc");
    for (const database::Row& row : rows)
        written.insert(row.integer("id"));
    // A lower end means that rows are missing from the table. The chain then continues after them.
    if (!rows.empty() && rows.front().integer("num") > end_.number)
        end_ = {rows.front().integer("num"), rows.front().text("hash")};
    while (done_ < entries_.size() && written.contains(entries_[done_].id))
        ++done_;
    is_end_known_ = true;
}

void Batch::write(database::Connection& connection) {
    try {
        if (!is_end_known_) find_end(connection);
        std::vector<database::Command> commands;
        std::vector<End> ends;
        for (std::size_t i = done_; i < entries_.size(); ++i) {
            const End& before = ends.empty() ? end_ : ends.back();
            commands.push_back(insertion(before, till_, entries_[i]));
            ends.push_back(after(before, till_, entries_[i]));
        }
        if (commands.empty()) return;
        is_end_known_ = false;  // until the answer is there
        connection.run_all(commands);
        connection.make_durable();
        done_ = entries_.size();
        end_ = ends.back();
        is_end_known_ = true;
    } catch (const database::Error& error) {
        if (error.sqlstate() != database::no_such_table) throw;
        has_table_ = false;
    }
}

void Trail::open(std::int64_t till, const Place& place, common::Clock& clock) {
    till_ = till;
    file_ = place.file_of(till);
    clock_ = &clock;
    Kept kept = read_kept(file_);
    shorten(file_, kept);
    end_ = std::move(kept.end);
    pending_ = std::move(kept.pending);
    is_end_known_ = false;
    has_table_ = true;
}

void Trail::note(const Event& event, const Person& user, std::int64_t store) {
    if (!is_open() || !has_table_) return;
    Entry entry{common::random_id(),
                clock_->now(),
                store,
                fitting(user),
                std::string(name_of(event.kind).stored),
                event};
    entry.moment.time.millisecond = 0;
    entry.event.what = fitting(event.what, longest_what);
    if (event.approver) entry.event.approver = fitting(*event.approver);
    keep_entry(file_, entry);
    pending_.push_back(std::move(entry));
}

Batch Trail::batch() const {
    Batch batch;
    batch.till_ = till_;
    batch.end_ = end_;
    batch.is_end_known_ = is_end_known_;
    batch.entries_.assign(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(
                                                                   std::min(pending_.size(), most_entries)));
    return batch;
}

void Trail::finish(const Batch& batch) {
    has_table_ = batch.has_table_;
    // A write() meanwhile may have got further.
    if (batch.end_.number >= end_.number) {
        end_ = batch.end_;
        is_end_known_ = batch.is_end_known_;
    }
    const std::size_t done = has_table_ ? batch.done_ : batch.entries_.size();
    if (done == 0) return;
    const auto last = std::ranges::find(pending_, batch.entries_[done - 1].id, &Entry::id);
    if (last == pending_.end()) return;
    keep_end(file_, end_, last->id);
    pending_.erase(pending_.begin(), last + 1);
}

void Trail::write(database::Connection& connection) {
    bool is_behind = false;
    while (has_pending()) {
        Batch next = batch();
        try {
            next.write(connection);
            finish(next);
        } catch (const database::Error& error) {
            finish(next);
            // Another thread wrote the rows meanwhile, so the end of the chain must be read again.
            if (error.sqlstate() != database::key_violated || std::exchange(is_behind, true)) throw;
        }
    }
}

}  // namespace audit
