// A cryptographic hash.
#pragma once

#include <string>

namespace audit {

// SHA-256 in hexadecimal digits.
std::string sha256(const std::string& text);

}  // namespace audit
