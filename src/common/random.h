// Numbers drawn by chance, from the system's own source.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace common {

// A number from 1 to `highest`, each as likely as any other.
std::int64_t random_number(std::int64_t highest);

// An id that tills need not agree on. It is whole in a double and on the safe side of bigint.
std::int64_t random_id();

// A text of decimal digits.
std::string random_digits(std::size_t count);

}  // namespace common
