// Finishing and undoing the documents whose content stands in the journal as JSON. `Save` is the content
// (common/json.h), `Rows` writes its rows and takes them back.
#pragma once

#include "common/json.h"
#include "database/unfinished.h"

namespace database {

template <typename Save, typename Rows>
void finish_rows(Connection& connection, JournalEntry& entry) {
    const Save save = common::from_json_text<Save>(entry.content);
    Journal journal(connection);
    journal.resume(entry.id);
    Rows(connection, journal, save).write();
    journal.end();
}

template <typename Save, typename Rows>
void undo_rows(Connection& connection, const JournalEntry& entry) {
    const Save save = common::from_json_text<Save>(entry.content);
    Journal journal(connection);
    journal.resume(entry.id);
    Rows(connection, journal, save).undo();
}

}  // namespace database
