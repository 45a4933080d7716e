// The colours of full pages; each keeps its contrast on a printer that has only black.
#pragma once

#include <QColor>

namespace printing::pages::colour {

inline const QColor ink(0x16, 0x32, 0x4A);  // headings, bands
inline const QColor text(0x1B, 0x24, 0x2C);
inline const QColor label(0x52, 0x63, 0x73);  // captions' labels, notes
inline const QColor line(0xB9, 0xC4, 0xCE);
inline const QColor stripe(0xF3, 0xF6, 0xF8);  // every second row
inline const QColor sums(0xE3, 0xE9, 0xEE);

}  // namespace printing::pages::colour
