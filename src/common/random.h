// Random numbers from the system's own source.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace common {

// A number from 1 to `highest`, all equally likely.
std::int64_t random_number(std::int64_t highest);

// An id that tills draw without asking each other. A double holds it exactly, and it fits a bigint.
std::int64_t random_id();

// A text of decimal digits.
std::string random_digits(std::size_t count);

}  // namespace common
