// Amounts in Arabic words, as printed invoices state them.
#pragma once

#include <stdexcept>
#include <string>

namespace common {

// The value is beyond the 16-bit range that the speller covers.
class OverflowError : public std::overflow_error {
  public:
    using std::overflow_error::overflow_error;
};

// "فقط … جنيها و … قرشا لاغير": pounds and piastres of an amount, computed in single precision. Its spacing
// and its silent cases (tens alone, thousands) are what the printed documents show and are kept as they are.
// Throws OverflowError above 32767 pounds.
std::string amount_in_words(float amount);

// The words of a whole number from 0 to 999, rounded to the nearest integer with halves to even; numbers of
// four and more digits give an empty text, those beyond 16 bits throw OverflowError.
std::string number_in_words(float value);

}  // namespace common
