// Amounts in Arabic words. Receipts and vouchers spell them differently.
#pragma once

#include <stdexcept>
#include <string>

#include "common/amount.h"

namespace common {

// The value is beyond the 16-bit range of number_in_words.
class OverflowError : public std::overflow_error {
  public:
    using std::overflow_error::overflow_error;
};

// An amount on a receipt, "فقط … جنيها و … قرشا لاغير": pounds and piastres, computed in single precision.
// The spacing and the numbers without words (10, thousands) are those of the printed documents. Throws
// OverflowError above 32767 pounds.
std::string amount_in_words(float amount);

// The words of a whole number from 0 to 999 on a receipt, rounded to the nearest integer with halves to even.
// Numbers of four and more digits give an empty text, those beyond 16 bits throw OverflowError.
std::string number_in_words(float value);

// An amount on a voucher, "فقط ألف ومائتان وأربعة وثلاثون جنيها وخمسون قرشا لا غير": pounds and piastres,
// rounded to two decimals and without the sign. Empty from 10^12 on.
std::string spell_amount(double amount);

// The amount as an invoice states it: in the words of receipts where they name pounds and piastres whole,
// else in those of vouchers (10, 110, 1000 and more; less than a pound). In figures from 10^12 on.
std::string invoice_words(Amount amount);

}  // namespace common
