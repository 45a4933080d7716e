#include "sales/pricing.h"

#include <algorithm>

#include "common/numbers.h"

namespace sales {

int default_level(std::int64_t main_p) {
    return main_p == 1 ? wholesale_level : retail_level;
}

std::string_view unit_name(int unit_level) {
    switch (unit_level) {
        case 2:
            return "عبوة";
        case 3:
            return "كرتونة";
        default:
            return "وحدة";
    }
}

std::optional<double> entry_price(const Item& item, int price_level) {
    const auto level = static_cast<std::size_t>(std::clamp(price_level, retail_level, last_level));
    const std::optional<double> card = item.prices[level - 1];
    if (!card) return std::nullopt;
    double price = *card * (100 - item.period_percent) / 100;
    // A period that names a price and no percent: that price holds for the single unit it was given for,
    // unless the customer's level is cheaper anyway.
    if (item.period_percent == 0 && item.unit_level == 1 && item.period_price && *item.period_price > 0)
        price = std::min(price, *item.period_price);
    return common::round_decimals(price, 2);
}

bool is_clearance(const Item& item) {
    return item.period_percent > 0;
}

}  // namespace sales
