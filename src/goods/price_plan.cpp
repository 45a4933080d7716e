#include "goods/price_plan.h"

#include <map>
#include <tuple>

#include "common/numbers.h"
#include "common/typed.h"
#include "database/transaction.h"
#include "goods/messages.h"
#include "signin/permissions.h"

namespace goods {

using common::Amount;
using common::Refusal;
using database::Row;
using database::Sql;

namespace {

constexpr double highest_percent = 1000;
constexpr double highest_price = 999'999'999;

// Ends a transaction in which a price was found changed.
struct ChangedMeanwhile {
    ChangedPrice found;
};

}  // namespace

Amount rounded_price(double price, int step) {
    const Amount exact(price);
    if (step == 0) return exact;
    const std::int64_t halves = 2 * exact.hundredths() + step;
    return Amount::of_hundredths(halves / (2 * step) * step);
}

std::optional<double> PricePlan::cost_of(const Row& card, int unit_level) const {
    const double cost = card.number(sales::price_column(unit_level, sales::cost_level));
    if (cost > 0) return cost;
    const double of_unit = card.number("price11");
    const double factor = unit_level == 1 ? 1 : card.number(unit_level == 2 ? "num2" : "num3");
    if (of_unit > 0) return of_unit * factor;
    return std::nullopt;
}

void PricePlan::plan(const Row& card, int unit_level, int price_level, double percent) {
    const std::string column = sales::price_column(unit_level, price_level);
    const double from = card.number(column);
    const auto cost = cost_of(card, unit_level);
    double to = from;
    switch (choice.rule) {
        case PriceRule::raise:
            to = from * (100 + percent) / 100;
            break;
        case PriceRule::lower:
            to = from * (100 - percent) / 100;
            break;
        case PriceRule::margin:
            to = cost.value_or(0) * (100 + percent) / 100;
            break;
        case PriceRule::round:
            break;
    }
    const double rounded = rounded_price(to, choice.step).value();
    const bool has_price = from > 0 || choice.rule == PriceRule::margin;
    if (has_price && same_price(rounded, from)) return;
    if (!has_price || !(rounded > 0) || rounded > highest_price) {
        if (from > 0 || choice.rule == PriceRule::margin) ++left_out_;
        return;
    }
    const bool is_below = cost && rounded < *cost && !same_price(rounded, *cost);
    if (is_below) ++below_cost_;
    const NewPrice price{card.integer("code"), unit_level, price_level, rounded};
    changes_.push_back({price, card.text("name"), from, is_below});
    plan_lowered(card, price);
}

void PricePlan::plan_lowered(const Row& card, const NewPrice& retail) {
    for (const ChangedPrice& lowered : lowered_with(retail, level_prices(card, retail.unit_level))) {
        if (choice.price_levels.contains(lowered.price.price_level)) continue;
        ++lowered_with_retail_;
        changes_.push_back({lowered.price, card.text("name"), lowered.from.value_or(0), false, true});
    }
}

void PricePlan::forget() {
    changes_.clear();
    items_ = below_cost_ = lowered_with_retail_ = left_out_ = 0;
}

std::optional<Refusal> PricePlan::work_out() {
    forget();
    double percent = 0;
    if (choice.rule != PriceRule::round) {
        const common::TypedNumber typed = common::read_number(choice.percent, message::wrong_percent);
        if (!typed.is_good()) return Refusal(percent_field, typed.refusal);
        percent = typed.value;
        const double highest = choice.rule == PriceRule::lower ? 99.99 : highest_percent;
        if (percent > highest || (percent == 0 && choice.rule != PriceRule::margin))
            return Refusal(percent_field, message::wrong_percent);
    } else if (choice.step == 0) {
        return Refusal("", message::choose_step);
    }
    if (choice.unit_levels.empty() || choice.price_levels.empty()) return Refusal("", message::choose_prices);
    for (const Row& card :
         connection_.query(Sql("select code,[name],num2,num3,price11,price12,price13,price14,price15,price21,"
                               "price22,price23,price24,price25,price31,price32,price33,price34,price35 from "
                               "items where ") +
                           condition_of(connection_, filter) + " order by [name], code")) {
        const std::size_t before = changes_.size();
        for (const int unit : choice.unit_levels)
            if (unit == 1 || card.number(unit == 2 ? "num2" : "num3") > 0)
                for (const int level : choice.price_levels)
                    plan(card, unit, level, percent);
        if (changes_.size() > before) ++items_;
    }
    return std::nullopt;
}

std::optional<Refusal> PricePlan::apply() {
    if (!signin::authorise_change(session_, prompts_, signin::Action::edit_goods)) return Refusal("", "");
    if (changes_.empty()) return Refusal("", message::nothing_changes);
    if (below_cost_ > 0 &&
        !prompts_.question(std::string(message::some_below_cost) + std::to_string(below_cost_) + "\n" +
                               std::string(message::save_all_the_same),
                           common::Icon::exclamation))
        return Refusal("", "");
    using Place = std::tuple<std::int64_t, int, int>;
    std::map<Place, const PlannedPrice*> planned;
    std::vector<NewPrice> prices;
    for (const PlannedPrice& change : changes_) {
        prices.push_back(change.price);
        planned[{change.price.item, change.price.unit_level, change.price.price_level}] = &change;
    }
    try {
        database::in_transaction(connection_, [&] {
            for (const ChangedPrice& change :
                 change_prices(connection_, session_, clock_.now(), prices, why::several)) {
                const NewPrice& price = change.price;
                const double from = planned.at({price.item, price.unit_level, price.price_level})->from;
                if (!same_price(change.from.value_or(0), from)) throw ChangedMeanwhile{change};
            }
        });
    } catch (const ChangedMeanwhile& changed) {
        const NewPrice& price = changed.found.price;
        const PlannedPrice& plan = *planned.at({price.item, price.unit_level, price.price_level});
        return Refusal("", std::string(message::price_changed_meanwhile) + plan.name + " : من " +
                               common::format_amount(plan.from) + " إلى " +
                               common::format_amount(changed.found.from.value_or(0)) + "\n" +
                               std::string(message::work_out_again));
    }
    connection_.make_durable();
    session_.note({.kind = audit::Kind::prices_changed,
                   .what = "تعديل أسعار أصناف: " + std::to_string(items_) +
                           "، أسعار: " + std::to_string(changes_.size())});
    changes_.clear();
    return std::nullopt;
}

}  // namespace goods
