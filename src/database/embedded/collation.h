// How the embedded engine compares texts: as the server does under Arabic_CI_AS.
#pragma once

#include <string>
#include <string_view>

namespace database::embedded {

// The collation's name in the engine.
inline constexpr const char* collation_name = "arabic_ci_as";

// One character in lower case: Latin, Greek and Cyrillic letters; Arabic has no case.
char32_t fold(char32_t character);
// A text as folded characters.
std::u32string folded(std::string_view text);
// Returns true if a text begins with a folded one. Reads no more of the text than that takes.
bool begins_with(std::string_view text, std::u32string_view folded_beginning);

// Returns a number less than, equal to or greater than 0. Case and trailing blanks make no difference;
// accents and marks do. The alefs (ا أ إ آ ٱ) sort together, yet differ.
int compare_texts(std::string_view a, std::string_view b);

// LIKE with the server's wildcards: % _ [set] [^set].
bool is_like(std::u32string_view folded_text, std::u32string_view folded_pattern);

}  // namespace database::embedded
