// Saves that a crash or a lost server has cut off: the question to the cashier, and finishing or undoing
// them.
#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "common/services.h"
#include "database/journal.h"

namespace database {

// How the saves of one kind of document are finished and undone. Both rely on the steps in the journal, throw
// if they cannot be completed, and can then be tried again.
struct Resumption {
    std::string_view kind;
    // How the activity log names the document.
    std::string (*log_name)(const JournalEntry& entry);
    // Changes the entry if the document has to be written differently from what was recorded.
    void (*finish)(Connection& connection, JournalEntry& entry);
    void (*undo)(Connection& connection, const JournalEntry& entry);
};

enum class Settled {
    finished,
    undone,
    left,  // the cashier did not answer, or it failed: to be asked again
};

// How the activity log names the document of an entry; if its content cannot be read, its kind and its title.
// `how` is null for a kind that this program does not know.
std::string log_name(const JournalEntry& entry, const Resumption* how);

// Finishes or undoes a save, makes that durable and logs it as "save of …" "finished" or "undone".
void finish(Connection& connection, common::Log& log, JournalEntry& entry, const Resumption& how);
void undo(Connection& connection, common::Log& log, const JournalEntry& entry, const Resumption& how);

// What is known about the printed receipt of a save.
enum class Paper { none, printed, unknown };

// Asks the cashier whether to finish or undo a save and does it. `cause` is the error that has just stopped
// it; null if it was cut off earlier.
Settled settle(Connection& connection, const common::Services& services, JournalEntry& entry,
               const Resumption& how, Paper paper, const std::exception* cause);

}  // namespace database
