// The bounds of what a line may hold: quantities, prices, and the discount ceiling.
#pragma once

#include <cstdint>

#include "sales/invoice.h"

namespace sales {

// Far above any sale of a shop and far below where sums of doubles lose a piastre.
inline constexpr double largest_quantity = 9'999'999;
inline constexpr double largest_price = 99'999'999;

// Above 0, within bounds, and with no more than the three decimals that a quantity shows.
bool is_valid_quantity(double quantity);
// A computed quantity without what binary sums add to its three decimals; any other is left alone.
double without_noise(double quantity);
// Above 0, within bounds, and with no more than four decimals, which is finer than any price list.
bool is_valid_price(double price);
// The same for a discount value or percent, which may be 0.
bool is_valid_discount(double discount);

// True when a discount is more than `max_dis` percent of an amount. The percentage is compared in single
// precision, as the ceiling is kept in: 7.1 percent passes a ceiling of 7.1. Any discount on nothing is too
// much.
bool exceeds_ceiling(double discount, double amount, float max_dis);

// True when an amount is below the cost by more than the noise of binary sums.
bool makes_loss(double amount, double cost);

// What the invoice holds of one craftsman work line.
double salver_quantity(const Invoice& invoice, std::int64_t salver_code, const Line* except = nullptr);

}  // namespace sales
