// Amounts in Arabic words as vouchers state them, thousands and millions included.
#pragma once

#include <string>

namespace common {

// "فقط ألف ومائتان وأربعة وثلاثون جنيها وخمسون قرشا لا غير": pounds and piastres of an amount, which is
// rounded to two decimals and spelled without its sign. Receipts have their own, shorter speller (words.h).
// Empty from 10^12 on.
std::string spell_amount(double amount);

}  // namespace common
