// Letters that roll printers lack, and the ones printed in their place.
#pragma once

#include <string_view>

namespace printing {

// The letters of code page 1256 that a character prints as if the printer has none of its own: ب for پ, e for
// é, lam and alef for their ligature. Empty for a character without such letters.
std::u32string_view nearest_letters(char32_t character);

}  // namespace printing
