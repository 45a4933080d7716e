#include "reports/discount_share.h"

namespace reports {

using common::Amount;

std::vector<Amount> shares_of(Amount discount, const std::vector<Amount>& lines) {
    Amount total;
    for (const Amount line : lines)
        total += line;
    std::vector<Amount> shares(lines.size());
    Amount left = discount;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool is_last = i + 1 == lines.size();
        if (is_last)
            shares[i] = left;
        else if (!total.is_zero())
            shares[i] = Amount(discount.value() * lines[i].value() / total.value());
        left -= shares[i];
    }
    return shares;
}

}  // namespace reports
