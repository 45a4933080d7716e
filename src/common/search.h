// Which letters a search treats as alike, because people do not distinguish them when they type: the alefs,
// ta marbuta and ha, ya and alef maqsura, the digits of all scripts, capitals and small letters. Tashkeel and
// tatweel are ignored. (Conditions of statements: database/name_search.h.)
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace common {

// A text with one letter for all that are alike, and without marks. The shop's file holds an index of such
// texts: whoever changes the result must rename that index (database/embedded/indexes.cpp).
std::string folded(std::string_view text);

// One character in lower case: Latin, Greek and Cyrillic letters; Arabic has no case.
char32_t lower_case_beyond_ascii(char32_t character);
inline char32_t lower_case(char32_t c) {
    if (c < 0x80) return c >= 'A' && c <= 'Z' ? c + 0x20 : c;
    return c > 0x42F ? c : lower_case_beyond_ascii(c);
}

// All characters that are alike, the given one among them; empty if there are no others.
std::u32string_view alike(char32_t character);
// Tashkeel and tatweel, which folded() leaves out.
bool is_mark(char32_t character);

// The folded words of what was typed; none if it is blank.
std::vector<std::string> search_words(std::string_view typed);
// Whether a folded text contains every word, in any order.
bool contains_words(std::string_view folded_text, const std::vector<std::string>& words);
// Whether every word begins a word of a folded text; an article before that word is ignored.
bool begins_words(std::string_view folded_text, const std::vector<std::string>& words);

}  // namespace common
