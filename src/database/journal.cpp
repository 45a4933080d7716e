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
        if (may_have_run(error)) forget();
        id_ = 0;
        if (error.sqlstate() != no_such_table) throw;
    }
}

void Journal::resume(std::int64_t id) {
    id_ = id;
    read_steps();
}

void Journal::read_steps() {
    steps_.clear();
    for (const Row& row : connection_.query(Sql("select * from till_step where save_id = ") + id_))
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
    in_transaction(connection_, [&] {
        remove();  // first: from now on no other program goes on with it
        read_steps();
        for (auto step = steps_.rbegin(); step != steps_.rend(); ++step)
            take_back(step->first, step->second);
        connection_.execute(Sql("delete from till_step where save_id = ") + id_);
    });
    id_ = 0;
    steps_.clear();
}

void Journal::rewrite(const JournalEntry& entry) {
    if (!is_recorded()) return;
    connection_.execute("update till_save set title = ?, content = ? where id = ?",
                        {entry.title, entry.content, id_});
}

void Journal::end(const std::function<void()>& with_it) {
    if (!is_recorded()) return with_it();
    in_transaction(connection_, [&] {
        remove();
        connection_.execute(Sql("delete from till_step where save_id = ") + id_);
        with_it();
    });
    id_ = 0;
    steps_.clear();
}

void Journal::remove() {
    if (connection_.execute(Sql("delete from till_save where id = ") + id_) == 0) throw_gone();
}

void Journal::forget() noexcept {
    try {
        connection_.execute(Sql("delete from till_save where id = ") + id_);
    } catch (const std::exception&) {
        // The server is still away.
    }
}

}  // namespace database
