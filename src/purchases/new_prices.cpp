#include "purchases/new_prices.h"

#include "goods/price_plan.h"

namespace purchases {

double price_above(double cost, double margin, int step) {
    return goods::rounded_price(cost * (1 + margin / 100), step).value();
}

std::vector<goods::NewPrice> new_prices(const Line& line, double base_cost, const database::Row& card) {
    std::vector<goods::NewPrice> prices;
    if (line.new_retail)
        prices.push_back({line.item, line.unit_level, sales::retail_level, *line.new_retail});
    if (!line.margin) return prices;
    for (int unit = 1; unit <= goods::units; ++unit) {
        const bool is_sold = card.number(sales::price_column(unit, sales::retail_level)) > 0;
        const double factor = unit == 1 ? 1 : card.number(unit == 2 ? "num2" : "num3");
        if (factor > 0 && (is_sold || unit == line.unit_level))
            prices.push_back({line.item, unit, sales::retail_level,
                              price_above(base_cost * factor, *line.margin, line.step)});
    }
    return prices;
}

}  // namespace purchases
