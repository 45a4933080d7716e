// Reads text receipts from the bytes that were sent to the printer.
#pragma once

#include <string>
#include <string_view>

#include "database/connection.h"

namespace play {

// Returns the lines of the paper in reading order, for messages; a shop with printer codes of its own prints
// other letters than are read here.
std::string readable_receipt(std::string_view bytes);

// Whether the bytes print the text anywhere, as a caption or as a name.
bool receipt_holds(std::string_view bytes, std::string_view text, database::Connection& connection);

}  // namespace play
