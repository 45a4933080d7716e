// Text receipts read back: the printer's bytes as Arabic text.
#pragma once

#include <string>
#include <string_view>

#include "database/connection.h"

namespace play {

// Every line in reading order; what only steers the printer is left out.
std::string readable_receipt(std::string_view bytes, database::Connection& connection);

// Whether the bytes print the text somewhere, as a caption or as a name.
bool receipt_holds(std::string_view bytes, std::string_view text, database::Connection& connection);

}  // namespace play
