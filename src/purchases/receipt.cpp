#include "purchases/receipt.h"

namespace purchases {

using common::Amount;

Amount Receipt::total() const {
    Amount sum;
    for (const Line& line : lines)
        sum += line.value();
    return sum;
}

// By the value of the lines; the last one takes what the roundings leave.
std::vector<Amount> Receipt::costs() const {
    const Amount all = total();
    Amount left = tax - discount;
    const double share = all.is_zero() ? 0 : left.value() / all.value();
    std::vector<Amount> costs;
    for (const Line& line : lines) {
        const Amount part = costs.size() + 1 == lines.size() ? left : Amount(line.value().value() * share);
        costs.push_back(line.value() + part);
        left -= part;
    }
    return costs;
}

double unit_cost(const Line& line, Amount cost) {
    return line.quantity > 0 ? cost.value() / line.quantity : 0;
}

}  // namespace purchases
