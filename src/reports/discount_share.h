// What a discount on a whole invoice takes off each of its lines.
#pragma once

#include <vector>

#include "common/amount.h"

namespace reports {

// In proportion to the lines' values, each share rounded to hundredths; the last line takes what is left, so
// that the shares add up to the discount. If no line has a value, the last one takes it all.
std::vector<common::Amount> shares_of(common::Amount discount, const std::vector<common::Amount>& lines);

}  // namespace reports
