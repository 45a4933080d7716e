// Reads text receipts from the bytes that were sent to the printer. It shares no code with the program's own
// conversion, so that it can find faults there.
#pragma once

#include <string>
#include <string_view>

namespace play {

// Returns the lines of the paper in reading order, the bytes read as code page 864; a shop with printer codes
// of its own prints other letters than are read here.
std::string readable_receipt(std::string_view bytes);

// Whether a line of the paper holds the text, in reading order or, for rows of figures, from the left. A
// letter that the page lacks counts as its nearest one.
bool receipt_holds(std::string_view bytes, std::string_view text);

}  // namespace play
