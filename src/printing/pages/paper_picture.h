// A text receipt as the paper would look, without a printer.
#pragma once

#include <QImage>
#include <string_view>
#include <vector>

namespace printing::pages {

struct PaperCharacter {
    char32_t letter = U' ';
    bool wide = false;
    bool operator==(const PaperCharacter&) const = default;
};
using PaperLine = std::vector<PaperCharacter>;

// What a roll printer prints for the bytes it is sent: lines from the top, characters from the left, letters
// in their printed forms. A line longer than `width` columns continues in the next one. Codes that are not in
// page 864 are blanks; unknown control bytes are skipped.
std::vector<PaperLine> paper_lines(std::string_view bytes, int width);

// Draws the paper with lines of `width` characters (0: read off the receipt's rules).
QImage paper_picture(std::string_view bytes, int width = 0);

}  // namespace printing::pages
