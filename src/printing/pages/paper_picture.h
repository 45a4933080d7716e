// A text receipt as the paper would look, without a printer.
#pragma once

#include <QImage>
#include <string_view>

namespace printing::pages {

// Draws the bytes as a roll printer prints them: code page 864, double width, line feeds, lines broken at
// `width` characters (0: read off the receipt's rules). Control bytes that the printer has not are passed
// over.
QImage paper_picture(std::string_view bytes, int width = 0);

}  // namespace printing::pages
