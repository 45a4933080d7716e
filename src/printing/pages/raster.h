// A page as the dots that a roll printer's print head burns, sent to its port.
#pragma once

#include <string>

#include "printing/pages/page_set.h"
#include "printing/receipt.h"

namespace printing::pages {

// The bytes that print a page as wide as a roll: the printer's reset, the part of the page that the print
// head reaches (8 dots a millimetre: 384 or 576 in a row) in bands that a small buffer holds, then a feed to
// the cutter and a cut. Dots are burned or not; there are no greys.
std::string raster(const PageSet& pages, const RollWidth& roll, ReceiptPicture command, int page = 0);

}  // namespace printing::pages
