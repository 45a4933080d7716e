#include "database/journal.h"

#include <random>
#include <utility>

#include "database/till_tables.h"
#include "database/transaction.h"

namespace database {

namespace {

// Drawn, so that tills need not agree on a number. Whole in a double and on the safe side of bigint.
std::int64_t new_id() {
    std::random_device source;
    return std::uniform_int_distribution<std::int64_t>(1, std::int64_t{1} << 52)(source);
}

std::vector<JournalEntry> entries(Connection& connection, const Sql& statement) {
    std::vector<JournalEntry> found;
    unless_table_is_missing([&] {
        for (const Row& row : connection.query(statement))
            found.push_back({row.integer("id"), row.integer("stcode"), row.integer("cash_no"),
                             row.text("kind"), row.text("title"), row.moment("begun"), row.text("content")});
    });
    return found;
}

void forget(Connection& connection, std::int64_t id) {
    try {
        connection.execute(Sql("delete from till_save where id = ") + id);
    } catch (const Error&) {
        // The server is still away.
    }
}

// Somebody else has finished or undone the save meanwhile.
[[noreturn]] void throw_gone() {
    throw Error("HY000", "The save was finished or undone by another program.", "");
}

}  // namespace

std::vector<JournalEntry> unfinished_saves(Connection& connection) {
    return entries(connection, Sql("select * from till_save order by begun, id"));
}

std::vector<JournalEntry> unfinished_saves(Connection& connection, std::int64_t store, std::int64_t drawer) {
    return entries(connection, Sql("select * from till_save where stcode = ") + store +
                                   " and cash_no = " + drawer + " order by begun, id");
}

void Journal::begin(const JournalEntry& entry) {
    steps_.clear();
    id_ = new_id();
    try {
        connection_.execute(
            "insert into till_save (id,stcode,cash_no,kind,title,begun,content) values (?,?,?,?,?,?,?)",
            {id_, entry.store, entry.drawer, entry.kind, entry.title, entry.begun, entry.content});
    } catch (const Error& error) {
        const std::int64_t lost = std::exchange(id_, 0);
        if (error.sqlstate() == no_such_table) return;
        if (may_have_run(error)) forget(connection_, lost);
        throw;
    }
}

void Journal::resume(std::int64_t id) {
    id_ = id;
    steps_.clear();
    for (const Row& row : connection_.query(Sql("select * from till_step where save_id = ") + id))
        steps_.emplace(static_cast<int>(row.integer("step")), row.text("noted"));
}

void Journal::once(int step, const std::function<std::string()>& write) {
    if (has_done(step)) return;
    std::string noted;
    in_transaction(connection_, [&] {
        noted = write();
        if (is_recorded()) note(step, noted);
    });
    steps_.emplace(step, std::move(noted));
}

// Adds nothing, and so fails, if the save is no longer there.
void Journal::note(int step, const std::string& noted) {
    const std::int64_t added =
        connection_.execute(Sql("insert into till_step (save_id,step,noted) select id, ") + step + ", " +
                            quoted(noted) + " from till_save where id = " + id_);
    if (added == 0) throw_gone();
}

void Journal::undo(const std::function<void(int step, const std::string& noted)>& take_back) {
    while (!steps_.empty()) {
        const auto last = std::prev(steps_.end());
        in_transaction(connection_, [&] {
            const std::int64_t removed = connection_.execute(Sql("delete from till_step where save_id = ") +
                                                             id_ + " and step = " + last->first);
            if (removed == 0) throw_gone();
            take_back(last->first, last->second);
        });
        steps_.erase(last);
    }
    end();
}

void Journal::rewrite(const JournalEntry& entry) {
    connection_.execute("update till_save set title = ?, content = ? where id = ?",
                        {entry.title, entry.content, entry.id});
}

void Journal::end() {
    if (!is_recorded()) return;
    in_transaction(connection_, [&] {
        connection_.execute(Sql("delete from till_step where save_id = ") + id_);
        connection_.execute(Sql("delete from till_save where id = ") + id_);
    });
    id_ = 0;
    steps_.clear();
}

}  // namespace database
