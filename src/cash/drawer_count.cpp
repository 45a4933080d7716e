#include "cash/drawer_count.h"

#include "common/numbers.h"
#include "common/text.h"

namespace cash {

using common::Amount;

Amount Pieces::value() const {
    return Amount::of_hundredths(denomination.hundredths() * count);
}

Amount DrawerCount::total() const {
    Amount total = other;
    for (const Pieces& of : pieces)
        total += of.value();
    return total;
}

std::optional<std::int64_t> read_pieces(std::string_view text) {
    constexpr std::size_t most_digits = 5;
    const std::string typed = common::western_digits(common::trim(text));
    if (typed.empty()) return 0;
    if (typed.size() > most_digits || !common::all_digits(typed)) return std::nullopt;
    return common::parse_integer(typed);
}

}  // namespace cash
