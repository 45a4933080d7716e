// Where the characters of the Arabic (101) keyboard layout are. Scanners may type under this layout, and keys
// with Ctrl and Alt mean a place on the keyboard, not a letter.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace common {

// The Latin character of the key that types `typed` on the Arabic layout; nothing if no key types it.
std::optional<char> latin_key(char32_t typed);
// The Arabic character of the key that types this Latin one; nothing if there is none.
std::optional<char32_t> arabic_key(char32_t latin);

// What the same keys type on a Latin layout. Characters of neither layout stay.
std::string on_latin_layout(std::string_view text);

}  // namespace common
