// The prices of a sale period: items, the percent by which their prices are lowered, and the resulting
// prices.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "sales/items.h"
#include "signin/session.h"

namespace shop {

struct PeriodPrice {
    std::int64_t item = 0;
    std::string name;
    std::optional<double> card;  // the retail price of the unit
    double percent = 0;
    std::array<std::string, 5> cells() const;  // code, name, price, percent, price in the period
};
inline constexpr std::array<std::string_view, 5> period_price_headings = {"كود", "الصنف", "السعر", "الخصم %",
                                                                          "سعر الفترة"};

class PeriodPrices {
  public:
    PeriodPrices(database::Connection& connection, const signin::Session& session, common::Services services,
                 std::int64_t period, std::string name)
        : connection_(connection),
          session_(session),
          services_(services),
          period_(period),
          name_(std::move(name)) {}

    void open();
    const std::vector<PeriodPrice>& rows() const { return rows_; }

    // Sets the percent of an item as it was typed, or computes it from a typed price; the other text is
    // empty. Refused if it is no percent, or no price below the card's. A refusal without text was shown
    // already.
    std::optional<common::Refusal> set(const sales::Item& item, std::string_view percent,
                                       std::string_view price);
    std::optional<common::Refusal> remove(std::int64_t item);

  private:
    std::optional<common::Refusal> write(std::int64_t item, std::optional<double> percent,
                                         std::optional<double> price, std::string_view about);
    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    std::int64_t period_;
    std::string name_;
    std::vector<PeriodPrice> rows_;
};

}  // namespace shop
