#include "sales/line_limits.h"

#include <algorithm>
#include <cmath>

#include "common/numbers.h"

namespace sales {

bool is_valid_quantity(double quantity) {
    return quantity > 0 && quantity <= largest_quantity && common::round_decimals(quantity, 3) == quantity;
}

double without_noise(double quantity) {
    const double rounded = common::round_decimals(quantity, 3);
    return std::abs(rounded - quantity) < 1e-7 ? rounded : quantity;
}

bool is_valid_price(double price) {
    return price > 0 && is_valid_discount(price);
}

bool is_valid_discount(double discount) {
    return discount >= 0 && discount <= largest_price && common::round_decimals(discount, 4) == discount;
}

bool exceeds_ceiling(double discount, double amount, float max_dis) {
    if (discount <= 0) return false;
    if (amount <= 0) return true;
    return static_cast<float>(discount * 100 / amount) > max_dis;
}

bool makes_loss(double amount, double cost) {
    return amount < cost - 1e-6 * std::max(1.0, std::abs(cost));
}

double salver_quantity(const Invoice& invoice, std::int64_t salver_code, const Line* except) {
    double quantity = 0;
    for (const Line& line : invoice.lines) {
        if (&line != except && line.salver_code == salver_code) quantity += line.quantity;
    }
    return quantity;
}

}  // namespace sales
