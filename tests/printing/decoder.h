// Decodes printed bytes with the C library's code page 864, independently of the program.
#pragma once

#include <string>
#include <string_view>

namespace test {

// The printed letters as UTF-8, in the order of the paper; a byte that is not in the page is "?".
std::string decode_864(std::string_view bytes);

// A line of the paper as it is read aloud: from the right, numbers and Latin words from the left, letters
// without their forms.
std::string read_aloud(std::string_view bytes);

}  // namespace test
