// Code 128, the barcode that carries a receipt's key.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace printing {

// The barcode's modules from the left, true for dark ones, without the quiet zones. The text's characters go
// in code set B, a tail of digits in set C, two to a symbol. Empty for a text with characters other than
// printable ASCII.
std::vector<bool> code_128(std::string_view text);

// The commands by which a roll printer draws the same barcode itself, in the middle of the paper, with the
// text below it.
std::string barcode_command(std::string_view text);

}  // namespace printing
