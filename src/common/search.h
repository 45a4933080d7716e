// Looking for a text that a person typed: digits find those of the other script, Western ones Arabic-Indic
// ones and the other way round.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace common {

// Whether a text contains what was typed, without regard to the script of digits and the case of ASCII
// letters.
bool contains_typed(std::string_view text, std::string_view typed);

// What was typed, followed by the same with Western and with Arabic-Indic digits where these differ: each is
// to be looked for in the database.
std::vector<std::string> digit_spellings(std::string_view typed);

}  // namespace common
