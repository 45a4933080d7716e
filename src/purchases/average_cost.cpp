#include "purchases/average_cost.h"

namespace purchases {

Valued with_goods(const Valued& stock, double quantity, double value) {
    const double held = stock.quantity + quantity;
    if (stock.quantity <= 0 || stock.cost <= 0) return {held, quantity > 0 ? value / quantity : stock.cost};
    return {held, (stock.quantity * stock.cost + value) / held};
}

Valued without_goods(const Valued& stock, double quantity, double value) {
    const double held = stock.quantity - quantity;
    const double left = stock.quantity * stock.cost - value;
    if (held <= 0 || left < 0) return {held, stock.cost};
    return {held, left / held};
}

}  // namespace purchases
