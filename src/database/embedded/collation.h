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
// Whether a text begins with a folded one; it reads no more of it than that takes.
bool begins_with(std::string_view text, std::u32string_view folded_beginning);

// Less than, equal to or greater than 0. Case and trailing blanks make no difference; accents and marks do.
// The alefs (ا أ إ آ ٱ) stand together in the order, yet differ.
int compare_texts(std::string_view a, std::string_view b);

// LIKE with the server's wildcards: % _ [set] [^set]; `escape` (0 for none) takes the next one literally.
bool is_like(std::u32string_view folded_text, std::u32string_view folded_pattern, char32_t escape);

}  // namespace database::embedded
