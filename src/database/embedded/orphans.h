// Whether there can be barcodes without an item. Every start deletes those; looking through all barcodes of a
// large shop each time would be the longest part of it.
#pragma once

#include <sqlite3.h>

#include "database/embedded/catalog.h"
#include "database/tsql/tokens.h"

namespace database::embedded {

// True for the deletion of the upgrade list, to the letter.
bool is_orphan_deletion(const tsql::Tokens& statement);

// From now on a note in the file says whether a barcode or an item has changed since the last deletion,
// whoever changes it. Does nothing while one of the tables is missing or the note is kept already.
void watch_for_orphans(sqlite3* engine, tsql::Catalog& catalog);

// False when nothing has changed since note_no_orphans().
bool can_have_orphans(sqlite3* engine, const tsql::Catalog& catalog);
void note_no_orphans(sqlite3* engine);

}  // namespace database::embedded
