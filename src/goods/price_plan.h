// Changes of the prices of several items at once, worked out before they are made.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "common/clock.h"
#include "common/form.h"
#include "common/prompts.h"
#include "common/refusal.h"
#include "goods/item_list.h"
#include "goods/prices.h"

namespace goods {

enum class PriceRule {
    raise,   // by a percent
    lower,   // by a percent
    margin,  // the cost and so many percent of it
    round,   // as they are, rounded
};

// A price rounded to a multiple of `step` hundredths, half of it upwards; to whole hundredths without a step.
common::Amount rounded_price(double price, int step);

struct PriceChoice {
    PriceRule rule = PriceRule::raise;
    std::string percent;  // as typed
    int step = 0;         // in hundredths: 5, 25, 50, 100; 0 for none
    std::set<int> unit_levels = {1, 2, 3};
    std::set<int> price_levels = {sales::retail_level};
};

struct PlannedPrice {
    NewPrice price;
    std::string name;
    double from = 0;
    bool is_below_cost = false;
    bool is_lowered_with_retail = false;  // although its level was not chosen
};

class PricePlan {
  public:
    PricePlan(database::Connection& connection, const signin::Session& session, common::Prompts& prompts,
              common::Clock& clock)
        : connection_(connection), session_(session), prompts_(prompts), clock_(clock) {}

    ItemFilter filter;
    PriceChoice choice;

    // Works out what would change; nothing is written.
    std::optional<common::Refusal> work_out();
    void forget();
    const std::vector<PlannedPrice>& changes() const { return changes_; }
    // How many items change, how many of the new prices are below the cost, how many come down only so as not
    // to be above retail, and how many prices stay as they are because they would be 0, too large, or because
    // the item has no cost.
    std::size_t items() const { return items_; }
    std::size_t below_cost() const { return below_cost_; }
    std::size_t lowered_with_retail() const { return lowered_with_retail_; }
    std::size_t left_out() const { return left_out_; }

    // Writes what was worked out, in one transaction, or nothing: also if one of the prices is not what it
    // was then. Asks about prices below the cost.
    std::optional<common::Refusal> apply();

  private:
    void plan(const database::Row& card, int unit_level, int price_level, double percent);
    void plan_lowered(const database::Row& card, const NewPrice& retail);
    std::optional<double> cost_of(const database::Row& card, int unit_level) const;

    database::Connection& connection_;
    const signin::Session& session_;
    common::Prompts& prompts_;
    common::Clock& clock_;
    std::vector<PlannedPrice> changes_;
    std::size_t items_ = 0;
    std::size_t below_cost_ = 0;
    std::size_t lowered_with_retail_ = 0;
    std::size_t left_out_ = 0;
};

inline constexpr std::string_view percent_field = "prices_percent";

}  // namespace goods
