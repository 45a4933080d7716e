// Code page 1256, the single-byte Arabic page of the program's files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace common {

// UTF-8 to code page 1256. A character that is not in the page becomes "?".
std::string to_code_page_1256(std::string_view text);
// Code page 1256 to UTF-8.
std::string from_code_page_1256(std::string_view bytes);
// The text of a file that a program on another system may have written: UTF-8, with or without its mark, or
// code page 1256 if it is not valid UTF-8.
std::string from_utf8_or_1256(std::string_view bytes);
// The code of one character in page 1256, if it has one.
std::optional<unsigned char> code_in_page_1256(char32_t character);

}  // namespace common
