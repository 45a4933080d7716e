// The search for names on the embedded engine: an index of folded names in the shop's file. The condition of
// database/name_search.h is recognised and answered from it.
#pragma once

#include <sqlite3.h>

#include <string>

#include "database/embedded/writer.h"

namespace database::embedded {

// The index of the folded names of a table, as the file names it. It holds what common::folded() gives: if
// that changes, this name must, so that shops make the index anew.
std::string name_index(const std::string& table);

// Takes the indexes of folded names out of a file that an earlier version is to read, which does not know
// their function. Who opens the file next makes them anew.
void drop_name_indexes(sqlite3* engine);

// Returns the column if the expression is searched_text() of one, else null.
const Expression* searched_column(Writer& writer, const Expression& expression);

// ts_folded(text), ts_like_folded(folded, pattern), and the range of folded texts in which all that match a
// pattern lie: ts_like_from(pattern) and, just behind it, ts_like_to(pattern).
void register_name_search(sqlite3* engine);

}  // namespace database::embedded
