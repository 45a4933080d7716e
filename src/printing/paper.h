// What a roll printer puts on its paper for the bytes it is sent.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace printing {

struct PaperCharacter {
    char32_t letter = U' ';
    bool wide = false;
    bool operator==(const PaperCharacter&) const = default;
};
using PaperLine = std::vector<PaperCharacter>;

// The lines from the top, each character in its place from the left; a line longer than `width` columns goes
// on in the next one. Codes that page 864 has not are blanks; unknown control bytes are passed over.
std::vector<PaperLine> paper_lines(std::string_view bytes, int width);

// A byte of code page 864 as a letter in the form in which it is printed; a blank where the page has none.
char32_t letter_of_864(unsigned char byte);

}  // namespace printing
