// The journal of saves: the documents that the tills of a shop are writing at the moment, and which steps of
// each are done. So a save that a crash or a lost server cut off can be finished or undone later, even by
// another program. The tables are till_save and till_step. A shop without them saves all the same, and
// nothing is recorded.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace database {

// A save as it stands in the journal.
struct JournalEntry {
    std::int64_t id = 0;
    std::int64_t store = 0;   // the till: its store
    std::int64_t drawer = 0;  // and its drawer
    std::string kind;         // which kind of document `content` describes
    std::string title;        // names the document to people
    common::Moment begun;
    std::string content;  // everything that is needed to write the document
};

// The saves that have not ended, oldest first: of all tills, or of one.
std::vector<JournalEntry> unfinished_saves(Connection& connection);
std::vector<JournalEntry> unfinished_saves(Connection& connection, std::int64_t store, std::int64_t drawer);

// Returns false if a save was finished or undone, or was never recorded.
bool is_unfinished(Connection& connection, std::int64_t id);

// A step whose statements are known before it begins.
struct PlannedStep {
    int number = 0;
    std::vector<Command> commands;
    std::string noted;  // known only while writing, and needed to take the step back
};

// One save and its steps. A step and the note that it is done are written in one transaction, so it is always
// known which steps are done, and none is done twice. There is no transaction around the steps.
class Journal {
  public:
    explicit Journal(Connection& connection) : connection_(connection) {}

    // Records a new save, before its first row is written. `entry` needs no id. If it throws, nothing is
    // recorded, except if the answer was lost and the server is away; the cashier is then asked about it
    // later.
    void begin(const JournalEntry& entry);
    // Goes on with a save that was recorded before.
    void resume(std::int64_t id);
    // Returns false if the save is not recorded: none was begun, or the shop lacks the tables.
    bool is_recorded() const { return id_ != 0; }
    std::int64_t id() const { return id_; }
    bool has_done(int step) const { return steps_.contains(step); }
    // The highest step that is done; 0 if none is.
    int last_step() const { return steps_.empty() ? 0 : steps_.rbegin()->first; }

    // Does a step unless it is done already. `write` returns what is known only while writing and is needed
    // to take the step back. It is called again if another till was in the way.
    void once(int step, const std::function<std::string()>& write);
    // Does planned steps in their order, on a server in one round trip, and takes their commands. After an
    // error has_done() tells which steps are done, unless the answer was lost. Nothing is tried again,
    // because what changed must be planned anew.
    void run(std::vector<PlannedStep>& steps) { run(steps, nullptr); }
    // Notes a step that wrote nothing as done, together with the next step.
    void note_with_next(int step) { noted_with_next_.push_back(step); }
    // Takes all steps back, the last one first, and removes the save, in one transaction: another program
    // either finds the whole save or nothing of it. `take_back` gets each step with what its write returned.
    void undo(const std::function<void(int step, const std::string& noted)>& take_back);
    // Changes what is recorded of the save. No step may have used the former content.
    void rewrite(const JournalEntry& entry);
    // Does the last steps, removes the finished save and, together with it, runs what belongs to its end.
    void end(std::vector<PlannedStep>& steps, std::vector<Command> with_it) { run(steps, &with_it); }
    void end() {
        std::vector<PlannedStep> none;
        end(none, {});
    }

  private:
    void run(std::vector<PlannedStep>& steps, std::vector<Command>* ending);
    void read_steps();
    void throw_if_gone(const Error& error);
    std::vector<Command> removal() const;
    // The notes of a step, and of those that wait for the next step if this is it.
    std::vector<Command> notes(int step, const std::string& noted, bool is_next = true) const;
    void count_as_done(int step, const std::string& noted);
    void leave();
    void forget() noexcept;

    Connection& connection_;
    std::int64_t id_ = 0;
    std::map<int, std::string> steps_;
    std::vector<int> noted_with_next_;
};

}  // namespace database
