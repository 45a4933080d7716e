// Quantities, prices and discounts: their limits, and typing them into a line or for the whole invoice.
#pragma once

#include <string_view>

#include "common/prompts.h"
#include "database/connection.h"
#include "sales/invoice.h"
#include "sales/stock_check.h"
#include "signin/session.h"

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

class LineEditing {
  public:
    LineEditing(database::Connection& connection, const signin::Session& session, common::Prompts& prompts)
        : connection_(connection),
          session_(session),
          prompts_(prompts),
          stock_(connection, session, prompts) {}

    // True when the cell may be opened; else the reason has been said. Only columns 4 to 7 open.
    bool may_open(const Line& line, int column);

    // Commits what was typed into a cell of columns 4 to 7. False when it was refused, which has been said: a
    // refused discount leaves "0.00", a refused quantity or price leaves the line as it was, and so does a
    // text that is no number.
    bool commit(Invoice& invoice, std::size_t row, int column, std::string_view text);

  private:
    bool refuse(std::string_view text);
    bool commit_quantity(Invoice& invoice, Line& line, std::string_view text);
    bool commit_price(Line& line, std::string_view text);
    bool commit_discount(Line& line, std::string_view text, bool as_percent);
    bool stock_allows(const Invoice& invoice, Line& line, double quantity);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Prompts& prompts_;
    StockCheck stock_;
};

// Both keep the percent, unrounded, so that the value shown is the value typed and follows the lines
// afterwards. False when refused, which has been said: the invoice then has no discount.
bool commit_discount_value(Invoice& invoice, const signin::Session& session, common::Prompts& prompts,
                           std::string_view text);
bool commit_discount_percent(Invoice& invoice, const signin::Session& session, common::Prompts& prompts,
                             std::string_view text);

}  // namespace sales
