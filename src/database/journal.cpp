#include "database/journal.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "common/random.h"
#include "database/till_tables.h"
#include "database/transaction.h"

namespace database {

namespace {

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

bool is_unfinished(Connection& connection, std::int64_t id) {
    return !connection.query(Sql("select id from till_save where id = ") + id).empty();
}

void Journal::begin(const JournalEntry& entry) {
    leave();
    id_ = common::random_id();
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
    until_unchanged([&] {
        try {
            Transaction transaction(connection_);
            noted = write();
            transaction.commit(notes(step, noted));
        } catch (const Error& error) {
            throw_if_gone(error);
            throw;
        }
    });
    count_as_done(step, noted);
}

void Journal::run(std::vector<PlannedStep>& steps, std::vector<Command>* ending) {
    std::vector<Command> commands;
    const auto add_transaction = [&](std::vector<Command> first, std::vector<Command> then) {
        if (first.empty() && then.empty()) return;
        commands.emplace_back(Sql("begin transaction"));
        std::ranges::move(first, std::back_inserter(commands));
        std::ranges::move(then, std::back_inserter(commands));
        commands.emplace_back(Sql("commit transaction"));
    };
    std::vector<std::pair<const PlannedStep*, std::size_t>> ends;  // of the steps in the batch
    for (PlannedStep& step : steps) {
        if (has_done(step.number)) continue;
        add_transaction(std::move(step.commands), notes(step.number, step.noted, ends.empty()));
        ends.emplace_back(&step, commands.size());
    }
    if (ending != nullptr) add_transaction(removal(), std::move(*ending));
    const auto count_done = [&](std::size_t done) {
        for (const auto& [step, end] : ends)
            if (end <= done) count_as_done(step->number, step->noted);
    };
    try {
        connection_.run_all(commands);
    } catch (const BatchError& error) {
        count_done(error.position());
        throw_if_gone(error);
        throw;
    }
    count_done(commands.size());
    if (ending != nullptr) leave();
}

// Adds nothing, and so fails, if the save is no longer there.
std::vector<Command> Journal::notes(int step, const std::string& noted, bool is_next) const {
    std::vector<Command> commands;
    if (!is_recorded()) return commands;
    const auto add = [&](int number, const std::string& text) {
        commands.push_back(
            Command("insert into till_step (save_id,step,noted) select id, ?, ? from till_save where id = ?",
                    {std::int64_t{number}, text, id_})
                .that_must_change());
    };
    if (is_next)
        for (const int waiting : noted_with_next_)
            add(waiting, "");
    add(step, noted);
    return commands;
}

void Journal::count_as_done(int step, const std::string& noted) {
    for (const int waiting : noted_with_next_)
        steps_.emplace(waiting, "");
    noted_with_next_.clear();
    steps_.emplace(step, noted);
}

// The save and its steps. Fails if the save is no longer there.
std::vector<Command> Journal::removal() const {
    if (!is_recorded()) return {};
    return {Command(Sql("delete from till_save where id = ") + id_).that_must_change(),
            Sql("delete from till_step where save_id = ") + id_};
}

// A missing row of the journal means that the save is gone; trying again is no use.
void Journal::throw_if_gone(const Error& error) {
    if (!is_recorded() || error.kind() != Error::Kind::changed_meanwhile) return;
    if (!is_unfinished(connection_, id_)) throw_gone();
}

void Journal::undo(const std::function<void(int step, const std::string& noted)>& take_back) {
    in_transaction(connection_, [&] {
        // Remove the save first, so that no other program goes on with it.
        if (connection_.execute(Sql("delete from till_save where id = ") + id_) == 0) throw_gone();
        read_steps();
        for (auto step = steps_.rbegin(); step != steps_.rend(); ++step)
            take_back(step->first, step->second);
        connection_.execute(Sql("delete from till_step where save_id = ") + id_);
    });
    leave();
}

void Journal::rewrite(const JournalEntry& entry) {
    if (!is_recorded()) return;
    connection_.execute("update till_save set title = ?, content = ? where id = ?",
                        {entry.title, entry.content, id_});
}

void Journal::leave() {
    id_ = 0;
    steps_.clear();
    noted_with_next_.clear();
}

void Journal::forget() noexcept {
    try {
        connection_.execute(Sql("delete from till_save where id = ") + id_);
    } catch (const std::exception&) {
        // The server is still away.
    }
}

}  // namespace database
