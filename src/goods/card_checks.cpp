// The card of an item: what is checked before it is saved.
#include <algorithm>
#include <cmath>

#include "common/amount.h"
#include "common/messages.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/form.h"
#include "goods/barcodes.h"
#include "goods/item_card.h"
#include "goods/messages.h"
#include "sales/entry.h"

namespace goods {

using common::Refusal;
using database::quoted;
using database::Sql;

namespace {

constexpr double highest_number = 1e9;

// What a number field holds that may be left blank.
struct TypedOptional {
    std::optional<double> value;
    std::string_view refusal;
};
TypedOptional read_optional(std::string_view text, std::string_view wrong) {
    if (common::trim(text).empty()) return {};
    const common::TypedNumber number = common::read_number(text, wrong);
    if (!number.is_good()) return {{}, number.refusal};
    if (number.value > highest_number) return {{}, wrong};
    return {number.value, {}};
}

// A text that fits on one line of the screen and of receipts.
std::string one_line(std::string_view text) {
    std::string line(common::trim(text));
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return line;
}

std::string named(std::string_view reason, const database::Row& item) {
    return std::string(reason) + item.text("name") + " (" + std::to_string(item.integer("code")) + ")";
}

std::string price_caption(int unit_level, int price_level) {
    return std::string(level_name(price_level)) + " " + std::string(sales::unit_name(unit_level));
}

}  // namespace

std::optional<Refusal> ItemCard::check(Checked& checked) {
    if (auto refusal = check_texts()) return refusal;
    if (auto refusal = check_code()) return refusal;
    if (auto refusal = check_units(checked)) return refusal;
    return check_prices(checked);
}

std::optional<Refusal> ItemCard::check_texts() {
    for (std::string* text : {&card.name, &card.description, &card.group, &card.maker})
        *text = one_line(*text);
    if (auto refusal = database::check(card_form(), card, database::TextLimits(connection_, "items")))
        return refusal;
    if (common::printable(card.name) != card.name) return Refusal("item_name", message::control_character);
    if (!database::TextLimits(connection_, "item_types").fits("name", card.group))
        return Refusal(group_field, common::message::text_too_long);
    if (!database::TextLimits(connection_, "makers").fits("name", card.maker))
        return Refusal(maker_field, common::message::text_too_long);
    return std::nullopt;
}

std::optional<Refusal> ItemCard::check_code() {
    if (!is_new_) return std::nullopt;
    const std::int64_t code = common::read_code(card.code).value();
    const auto taken = connection_.query(Sql("select code,[name] from items where code = ") + code);
    if (!taken.empty()) return Refusal("item_code", named(message::code_taken, taken.front()));
    // A scan looks for a barcode first, so that it would hide this item.
    const auto hidden = connection_.query(Sql("select items.code, items.[name] from barcode inner join items "
                                              "on barcode.code = items.code where "
                                              "bar = ") +
                                          quoted(std::to_string(code)));
    if (!hidden.empty()) return Refusal("item_code", named(message::code_is_barcode, hidden.front()));
    return std::nullopt;
}

std::optional<Refusal> ItemCard::check_units(Checked& checked) {
    struct Factor {
        std::string_view field;
        std::string_view text;
        std::optional<double>* value;
    };
    for (const auto& [field, text, value] : {Factor{"item_pack", card.pack, &checked.pack},
                                             Factor{"item_carton", card.carton, &checked.carton}}) {
        const TypedOptional typed = read_optional(text, message::wrong_factor);
        if (!typed.refusal.empty()) return Refusal(field, typed.refusal);
        if (typed.value && !(*typed.value > 0)) return Refusal(field, message::wrong_factor);
        *value = typed.value;
    }
    const TypedOptional minimum = read_optional(card.minimum, message::wrong_minimum);
    if (!minimum.refusal.empty()) return Refusal("item_minimum", minimum.refusal);
    checked.minimum = minimum.value;
    for (const CardBarcode& barcode : card.barcodes)
        if (!checked.has_unit(barcode.unit_level))
            return Refusal(barcode.unit_level == 2 ? "item_pack" : "item_carton", message::factor_needed);
    return std::nullopt;
}

// An empty price of a pack or carton is the unit's price times its units; an empty price of a level behind
// retail is the retail price.
std::optional<Refusal> ItemCard::check_prices(Checked& checked) {
    const double factors[units] = {1, checked.pack.value_or(0), checked.carton.value_or(0)};
    for (int unit = 1; unit <= units; ++unit) {
        if (!checked.has_unit(unit)) continue;
        const auto at = static_cast<std::size_t>(unit) - 1;
        for (int level = shows_cost_ ? sales::cost_level : sales::retail_level; level <= price_levels;
             ++level) {
            const auto column = static_cast<std::size_t>(level) - 1;
            const std::string& text = card.prices[at][column];
            const bool is_cost = level == sales::cost_level;
            double& price = checked.prices[at][column];
            if (common::trim(text).empty()) {
                price = unit > 1                      ? checked.prices[0][column] * factors[at]
                        : level > sales::retail_level ? checked.prices[0][1]
                                                      : 0;
                if (!is_cost) price = common::Amount(price).value();
                if (unit == 1 && level == sales::retail_level)
                    return Refusal(price_field(unit, level), message::enter_price);
                continue;
            }
            const TypedOptional cost = read_optional(text, message::wrong_cost);
            const common::TypedAmount amount = common::read_amount(text);
            const std::string_view refusal = is_cost ? cost.refusal : amount.refusal;
            if (!refusal.empty()) return Refusal(price_field(unit, level), refusal);
            price = is_cost ? common::round_decimals(*cost.value, 4) : amount.value.value();
            if (!is_cost && price == 0) return Refusal(price_field(unit, level), message::price_is_zero);
        }
    }
    return std::nullopt;
}

// Prices of pack and carton follow that of the unit, and the levels behind retail follow retail, as long as
// they were still the computed ones.
bool ItemCard::follow(int unit_level, int price_level, std::string_view before) {
    const auto unit = static_cast<std::size_t>(unit_level) - 1;
    const auto level = static_cast<std::size_t>(price_level) - 1;
    const auto old_price = common::read_amount(before);
    const auto new_price = common::read_amount(card.prices[unit][level]);
    if (!old_price.is_good() || !new_price.is_good() || old_price.value.is_zero() ||
        new_price.value.is_zero() || old_price.value == new_price.value)
        return false;
    bool has_followed = false;
    const auto move = [&](std::size_t to_unit, std::size_t to_level, double factor) {
        std::string& text = card.prices[to_unit][to_level];
        const auto price = common::read_amount(text);
        if (text.empty() || !price.is_good() ||
            price.value != common::Amount(old_price.value.value() * factor))
            return;
        const std::string former =
            std::exchange(text, common::Amount(new_price.value.value() * factor).text());
        has_followed = true;
        if (to_unit == 0) follow(1, static_cast<int>(to_level) + 1, former);
    };
    const std::string factors[units] = {"1", card.pack, card.carton};
    for (std::size_t other = 1; unit_level == 1 && other < units; ++other)
        if (const double factor = common::numeric_value(factors[other]); factor > 0)
            move(other, level, factor);
    for (std::size_t other = level + 1; price_level == sales::retail_level && other < price_levels; ++other)
        move(unit, other, 1);
    return has_followed;
}

// Asks about selling prices below the cost if they or the cost were edited.
bool ItemCard::may_be_below_cost(const Checked& checked) {
    if (!shows_cost_ || (!is_new_ && card.prices == shown_.prices)) return true;
    std::string below;
    for (int unit = 1; unit <= units; ++unit) {
        if (!checked.has_unit(unit)) continue;
        const auto& prices = checked.prices[static_cast<std::size_t>(unit) - 1];
        for (int level = sales::retail_level; level <= price_levels; ++level) {
            const double price = prices[static_cast<std::size_t>(level) - 1];
            if (price >= prices[0] || same_price(price, prices[0])) continue;
            below += "\n" + price_caption(unit, level) + " " + common::format_amount(price) + "  (" +
                     price_caption(unit, sales::cost_level) + " " + common::format_amount(prices[0]) + ")";
        }
    }
    if (below.empty()) return true;
    return prompts_.question(
        std::string(message::below_cost) + below + "\n" + std::string(message::save_all_the_same),
        common::Icon::exclamation);
}

bool ItemCard::may_add_names() {
    const auto may_add = [&](const std::string& name, const std::vector<std::string>& known,
                             std::string_view question) {
        return name.empty() || std::ranges::find(known, name) != known.end() ||
               prompts_.question(std::string(question) + name);
    };
    return may_add(card.group, groups_, message::new_group) &&
           may_add(card.maker, makers_, message::new_maker);
}

// Why the shop cannot have this barcode on this card; nothing if it can.
std::optional<std::string> ItemCard::barcode_refusal(const std::string& barcode) {
    const auto taken = connection_.query(Sql("select items.code, items.[name] from barcode inner join items "
                                             "on barcode.code = items.code where "
                                             "bar = ") +
                                         quoted(barcode) + " and items.code <> " + code_);
    if (!taken.empty()) return named(message::barcode_taken, taken.front());
    const auto as_code = common::all_digits(barcode) ? common::read_code(barcode) : std::nullopt;
    if (!as_code || as_code == code_) return std::nullopt;
    const auto hidden = connection_.query(Sql("select code, [name] from items where code = ") + *as_code);
    if (!hidden.empty()) return named(message::barcode_is_code, hidden.front());
    return std::nullopt;
}

bool ItemCard::add_barcode(std::string_view typed, int unit_level) {
    const std::string barcode = sales::normalize_scan(typed);
    const BarcodeFault fault = barcode_fault(barcode);
    if (fault != BarcodeFault::none && fault != BarcodeFault::check_digit) {
        prompts_.message(words_for(fault), common::Icon::exclamation);
        return false;
    }
    std::optional<std::string> refusal;
    if (!database::TextLimits(connection_, "barcode").fits("bar", barcode))
        refusal = message::barcode_too_long;
    else if (std::ranges::find(card.barcodes, common::lower_ascii(barcode), [](const CardBarcode& one) {
                 return common::lower_ascii(one.text);
             }) != card.barcodes.end())
        refusal = message::barcode_on_card;
    else
        refusal = barcode_refusal(barcode);
    if (refusal) {
        prompts_.message(*refusal, common::Icon::exclamation);
        return false;
    }
    if (fault == BarcodeFault::check_digit &&
        !prompts_.question(barcode + "\n" + std::string(words_for(fault)), common::Icon::exclamation))
        return false;
    card.barcodes.push_back({barcode, unit_level});
    return true;
}

bool ItemCard::draw_barcode(int unit_level) {
    const auto code = common::read_code(card.code);
    if (!code) {
        prompts_.message(message::enter_code, common::Icon::exclamation);
        return false;
    }
    for (const std::string& barcode : own_barcodes(*code, unit_level)) {
        const bool is_here =
            std::ranges::find(card.barcodes, barcode, &CardBarcode::text) != card.barcodes.end();
        if (is_here || barcode_refusal(barcode)) continue;
        card.barcodes.push_back({barcode, unit_level});
        return true;
    }
    prompts_.message(message::no_free_barcode, common::Icon::exclamation);
    return false;
}

}  // namespace goods
