// The printer that was chosen at a workstation, kept in a file beside the program.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "printing/receipt.h"

namespace printing {

// The choice that a common::printer_file keeps; nothing if it holds none. Its lines are "port = lpt1",
// "width = 48", and "picture = raster" or "picture = bit image" where receipts go to the port as pictures.
std::optional<PrinterChoice> read_printer_choice(const std::filesystem::path& file);

// Throws std::system_error if the file cannot be written; the one before then stays.
void keep_printer_choice(const std::filesystem::path& file, const PrinterChoice& choice);

}  // namespace printing
