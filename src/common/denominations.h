// The notes and coins of the currency, and the sums that a customer is likely to hand over.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/amount.h"

namespace common {

// The values of the notes and coins, the largest first, each once.
using Denominations = std::vector<Amount>;

// The notes and coins of the pound; its name and parts are in amount_in_words.h.
const Denominations& default_denominations();

// Reads values with blanks between them in any order. Returns nothing if one is no amount above 0, or if
// there are more than a count can show.
std::optional<Denominations> read_denominations(std::string_view text);
// The same as a text: "200 100 50 0.50".
std::string denominations_text(const Denominations& denominations);
// A value as a note shows it: "200", "0.25".
std::string denomination_text(Amount denomination);

// What a customer is likely to hand over for an amount, besides the amount itself: a larger note, or a sum of
// notes none of which could be left out. Returns at most `most` sums, those of the fewest pieces, the
// smallest first.
std::vector<Amount> likely_payments(Amount net, const Denominations& denominations, std::size_t most = 3);

}  // namespace common
