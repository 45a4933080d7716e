// How the embedded engine compares texts: as the server does under Arabic_CI_AS.
#pragma once

#include <string>
#include <string_view>

namespace database::embedded {

// The collation's name in the engine.
inline constexpr const char* collation_name = "arabic_ci_as";

// A text as characters in lower case.
std::u32string lower_text(std::string_view text);

// Returns a number less than, equal to or greater than 0. Case and trailing blanks make no difference;
// accents and marks do. The alefs (ا أ إ آ ٱ) sort together but are not equal.
int compare_texts(std::string_view a, std::string_view b);

// LIKE with the server's wildcards: % _ [set] [^set].
bool is_like(std::u32string_view lower_text, std::u32string_view lower_pattern);

}  // namespace database::embedded
