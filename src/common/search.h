// Searching for typed text in lists in memory. (In the database: like_text in database/sql.h.)
#pragma once

#include <string_view>

namespace common {

// Whether a text contains what was typed, without regard to the script of digits and the case of ASCII
// letters.
bool contains_typed(std::string_view text, std::string_view typed);

}  // namespace common
