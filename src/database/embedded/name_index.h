// The search for names on the embedded engine: an index of folded names in the shop's file. The condition of
// database/name_search.h is recognised and answered from it.
#pragma once

#include <sqlite3.h>

#include <string>

#include "database/embedded/writer.h"

namespace database::embedded {

// The index of the folded names of a table, as the file names it. It holds results of common::folded(): if
// that changes, this name must change too, so that shops make the index anew.
std::string name_index(const std::string& table);

// Removes the indexes of folded names from a file for an earlier version, which does not know their function.
// The next program that opens the file makes them anew.
void drop_name_indexes(sqlite3* engine);

// Returns the column if the expression is searched_text() of one, else null.
const Expression* searched_column(Writer& writer, const Expression& expression);

// ts_folded(text), ts_like_folded(folded, pattern), and the range of folded texts that contains all matches
// of a pattern: from ts_like_from(pattern) up to, but not including, ts_like_to(pattern).
void register_name_search(sqlite3* engine);

}  // namespace database::embedded
