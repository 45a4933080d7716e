// Text helpers. All text in the program is UTF-8; lengths count characters (code points), not bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace common {

std::string_view trim(std::string_view text);         // blanks, tabs and line ends at both ends
std::string_view trim_blanks(std::string_view text);  // blanks alone, at both ends
std::string_view trim_right(std::string_view text);   // trailing blanks alone, as the database compares

std::size_t length(std::string_view text);  // in characters
std::string left(std::string_view text, std::size_t characters);
std::string right(std::string_view text, std::size_t characters);

// The width of a text in a database column, and the beginning of a text that fits a column. The server counts
// a character beyond the first 65,536, such as a smiley, twice.
std::size_t column_width(std::string_view text);
std::string cut_to_column(std::string_view text, std::size_t width);

// The text without control characters and without marks that change the direction of what follows, so that it
// can neither move a terminal's cursor nor make one name look like another. Joiners stay, because Arabic
// needs them.
std::string printable(std::string_view text);

// Converts between UTF-8 and code points. Malformed bytes become U+FFFD.
std::u32string code_points(std::string_view text);
std::string utf8(std::u32string_view text);
std::string utf8(char32_t character);
// Reads the character at `at` and moves `at` past it, or past one byte if the bytes are malformed.
char32_t next_character(std::string_view text, std::size_t& at);

// Compares without regard to the case of ASCII letters. Inline, because looking up a column calls it for
// every column before it.
inline bool equal_ignoring_case(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] == b[i]) continue;
        const char letter = static_cast<char>(a[i] | 0x20);
        if (letter != (b[i] | 0x20) || letter < 'a' || letter > 'z') return false;
    }
    return true;
}
std::string lower_ascii(std::string_view text);

}  // namespace common
