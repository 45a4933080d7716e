// Conditions of statements that look for what somebody typed, with the letters that common/search.h calls
// alike.
#pragma once

#include <string>
#include <string_view>

#include "database/sql.h"

namespace database {

// A column's text without marks and in lower case, to be compared with such patterns. In a search of items by
// name, the embedded engine knows this expression as a whole and reads an index of folded names instead.
Sql searched_text(Fragment column);

// The names that begin with what was typed, and those that contain all its words in any order. At least one
// word must have been typed.
Sql begins_with_typed(Fragment column, std::string_view typed);
Sql contains_typed_words(Fragment column, std::string_view typed);

}  // namespace database
