// Quantities, prices and discounts: their limits, and typing them into a line or for the whole invoice.
#pragma once

#include <string_view>

#include "common/prompts.h"
#include "database/connection.h"
#include "sales/invoice.h"
#include "sales/stock_check.h"
#include "signin/permissions.h"

namespace sales {

// Far above any sale of a shop and far below where sums of doubles lose a piastre.
inline constexpr double largest_quantity = 9'999'999;
inline constexpr double largest_price = 99'999'999;

// Above 0, within bounds, and with no more than the three decimals that a quantity shows.
bool is_valid_quantity(double quantity);
// A computed quantity without the error that binary sums add to its three decimals. A quantity that really
// has more decimals stays as it is.
double without_noise(double quantity);
// Above 0, within bounds, and with at most four decimals; no price list is finer.
bool is_valid_price(double price);
// The same for a discount value or percent; it may also be 0.
bool is_valid_discount(double discount);

// Returns true if a discount is more than `max_dis` percent of an amount. The percentage is compared in
// single precision, like the ceiling itself: 7.1 percent passes a ceiling of 7.1. Any discount on nothing
// exceeds it.
bool exceeds_ceiling(double discount, double amount, float max_dis);

class LineEditing {
  public:
    LineEditing(database::Connection& connection, const signin::Session& session, common::Prompts& prompts)
        : connection_(connection), session_(session), prompts_(prompts), check_(session, prompts) {}

    // Returns true if the cell may be opened, else false after showing why. Only columns 4 to 7 open. What a
    // supervisor allowed stands in the line and is used by the next commit.
    bool may_open(Line& line, int column);

    // Commits what was typed into a cell of columns 4 to 7. Returns false after showing why it was refused: a
    // discount that is too high becomes "0.00"; a refused quantity or price, and any text that is not a valid
    // number, leaves the line as it was.
    bool commit(Invoice& invoice, std::size_t row, int column, std::string_view text);

    // Turns a line to the next unit of its item: unit, pack, carton, unit. Skips units without base units or
    // a price on the card. The line keeps its quantity and discount and takes the price of the unit, as if it
    // had been entered so. If the stock does not allow a unit, a smaller one is tried. Returns false after
    // showing why the line stays.
    bool next_unit(Invoice& invoice, std::size_t row);

  private:
    bool refuse(std::string_view text);
    bool may(Line& line, signin::Action action);
    bool commit_quantity(Invoice& invoice, Line& line, std::string_view text);
    bool commit_price(Line& line, std::string_view text);
    bool commit_discount(Line& line, std::string_view text, bool as_percent);
    bool stock_allows(const Invoice& invoice, Line& line, double quantity);
    bool stock_allows(const Invoice& invoice, Line& line, double quantity, const ItemStock& stock,
                      const std::optional<CraftsmanLine>& work);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Prompts& prompts_;
    StockCheck check_;
};

// The discount on the whole invoice. Both keep the percent unrounded, so that the value typed is the value
// shown, and it follows the lines afterwards. They return false after showing why it was refused; the invoice
// then has no discount.
bool commit_discount_value(Invoice& invoice, const signin::Session& session, common::Prompts& prompts,
                           std::string_view text);
bool commit_discount_percent(Invoice& invoice, const signin::Session& session, common::Prompts& prompts,
                             std::string_view text);

}  // namespace sales
