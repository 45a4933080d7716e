// Knows whether there can be orphans: barcodes without an item. Every start deletes them, and searching all
// barcodes of a large shop would be the longest part of the start.
#pragma once

#include <sqlite3.h>

#include "database/embedded/catalog.h"
#include "database/tsql/scanner.h"

namespace database::embedded {

// Returns true if the statement is, to the letter, the upgrade list's deletion.
bool is_orphan_deletion(const tsql::Tokens& statement);

// From now on triggers note in the file that a barcode or an item has changed since the last deletion,
// whoever changes it. Does nothing if one of the tables is missing or the triggers exist.
void watch_for_orphans(sqlite3* engine, Catalog& catalog);

// Returns false if nothing has changed since note_no_orphans().
bool can_have_orphans(sqlite3* engine, const Catalog& catalog);
void note_no_orphans(sqlite3* engine);

}  // namespace database::embedded
