// Text for roll printers, which print left to right and know no Arabic joining.
#pragma once

#include <string>
#include <string_view>

#include "printing/printer_codes.h"

namespace printing {

// An Arabic text as the bytes that print it: one byte per character in its joined or unjoined form, the last
// letter first, numbers in reading order. What the printer's page has not becomes a blank (0xA0).
std::string printer_text(std::string_view text, const PrinterCodes& codes);

// A name or another text that a user typed: printer_text() where it holds Arabic letters, else its characters
// as they stand. Neither ever holds a control byte.
std::string name_text(std::string_view text, const PrinterCodes& codes);

}  // namespace printing
