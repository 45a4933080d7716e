#include "purchases/receipt.h"

#include "reports/discount_share.h"

namespace purchases {

using common::Amount;

Amount Receipt::total() const {
    Amount sum;
    for (const Line& line : lines)
        sum += line.value();
    return sum;
}

std::vector<Amount> Receipt::costs() const {
    std::vector<Amount> costs;
    for (const Line& line : lines)
        costs.push_back(line.value());
    const std::vector<Amount> shares = reports::shares_of(tax - discount, costs);
    for (std::size_t at = 0; at < costs.size(); ++at)
        costs[at] += shares[at];
    return costs;
}

double unit_cost(const Line& line, Amount cost) {
    return line.quantity > 0 ? cost.value() / line.quantity : 0;
}

}  // namespace purchases
