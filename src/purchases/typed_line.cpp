#include "purchases/typed_line.h"

#include "common/messages.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "purchases/goods_in.h"
#include "purchases/messages.h"
#include "sales/line_editing.h"

namespace purchases {

using common::Amount;
using common::Refusal;

namespace {

constexpr std::string_view arabic_percent = "٪";

// A price of 0 or more; nothing typed is 0.
std::optional<Refusal> read_price(std::string_view typed, std::string_view field, std::string_view wrong,
                                  double& price) {
    if (common::trim(typed).empty()) {
        price = 0;
        return std::nullopt;
    }
    const auto number = common::read_number(typed, wrong);
    if (!number.is_good()) return Refusal(field, number.refusal);
    if (!sales::is_valid_discount(number.value)) return Refusal(field, wrong);
    price = number.value;
    return std::nullopt;
}

std::optional<Refusal> read_quantity(std::string_view typed, Line& line) {
    const auto number = common::read_number(typed, message::wrong_quantity);
    if (!number.is_good()) return Refusal("line_quantity", number.refusal);
    if (!sales::is_valid_quantity(number.value)) return Refusal("line_quantity", message::wrong_quantity);
    if (line.returnable && number.value > *line.returnable)
        return Refusal("line_quantity",
                       std::string(message::most_returnable) + common::shortest_text(*line.returnable));
    line.quantity = number.value;
    return std::nullopt;
}

// The total counts if it was changed, else the price. A percent is taken of the line's value before the
// discount.
std::optional<Refusal> read_worth(const LineFields& typed, const LineFields& shown, Line& line) {
    const bool is_percent =
        common::trim(typed.discount).ends_with('%') || common::trim(typed.discount).ends_with(arabic_percent);
    const bool by_total = typed.total != shown.total && typed.price == shown.price;
    if (by_total) {
        const auto total = common::read_amount(typed.total);
        if (!total.is_good()) return Refusal("line_total", total.refusal);
        // A total that was typed already includes the discount.
        if (is_percent) return Refusal("line_total", message::percent_and_total);
        const auto discount = common::read_amount(typed.discount);
        if (!discount.is_good()) return Refusal("line_discount", discount.refusal);
        line.discount = discount.value.value();
        line.price = (total.value + discount.value).value() / line.quantity;
    } else {
        if (typed.price != shown.price)
            if (auto refused = read_price(typed.price, "line_price", message::wrong_cost, line.price))
                return refused;
        Amount discount;
        if (auto refused = read_discount(typed.discount, Amount(line.gross()), "line_discount", discount))
            return refused;
        line.discount = discount.value();
    }
    // A computed total has the same limits as one that is typed.
    if (!common::read_amount(line.value().text()).is_good()) return Refusal("line_price", message::too_much);
    return std::nullopt;
}

std::optional<Refusal> read_expiry(std::string_view typed, Line& line) {
    line.expiry.reset();
    if (common::trim(typed).empty()) return std::nullopt;
    line.expiry = common::read_date(typed);
    if (!line.expiry) return Refusal("line_expiry", message::wrong_expiry);
    return std::nullopt;
}

std::optional<Refusal> read_retail(const LineFields& typed, const LineFields& shown, Line& line) {
    if (typed.retail == shown.retail) return std::nullopt;
    double price = 0;
    if (auto refused = read_price(typed.retail, "line_retail", message::wrong_price, price)) return refused;
    line.margin.reset();
    line.new_retail.reset();
    if (price > 0) line.new_retail = price;
    return std::nullopt;
}

}  // namespace

std::string price_text(double price) {
    return price == 0 ? std::string() : common::shortest_text(common::round_decimals(price, price_decimals));
}

std::string discount_text(double value) {
    return value == 0 ? std::string() : common::format_amount(value);
}

std::optional<Refusal> read_discount(std::string_view typed, Amount of, std::string_view field,
                                     Amount& value) {
    std::string_view text = common::trim(typed);
    std::string_view percent;
    for (const std::string_view mark : {std::string_view("%"), arabic_percent})
        if (text.ends_with(mark)) percent = mark;
    text = common::trim(text.substr(0, text.size() - percent.size()));
    if (text.empty()) {
        value = Amount();
        return std::nullopt;
    }
    const auto number = common::read_number(text, message::wrong_discount);
    if (!number.is_good()) return Refusal(field, number.refusal);
    const Amount read(percent.empty() ? number.value : of.value() * number.value / 100);
    if (read > of) return Refusal(field, message::discount_above);
    value = read;
    return std::nullopt;
}

LineFields GoodsIn::line_fields() const {
    if (row >= receipt_.lines.size()) return {};
    const Line& line = receipt_.lines[row];
    return {common::shortest_text(line.quantity),
            line.unit_level,
            price_text(line.price),
            line.value().text(),
            discount_text(line.discount),
            line.expiry ? common::date_text(*line.expiry) : std::string(),
            line.new_retail || line.margin ? price_text(retail_of(row)) : std::string()};
}

std::optional<Refusal> GoodsIn::set_line(const LineFields& typed) {
    if (row >= receipt_.lines.size()) return std::nullopt;
    const LineFields shown = line_fields();
    Line line = receipt_.lines[row];
    if (!typed.unit) return Refusal("line_unit", common::message::not_in_list);
    if (*typed.unit != line.unit_level) {
        const auto item = sales::load_item(connection_, line.item, static_cast<int>(*typed.unit));
        if (!item) return Refusal("line_unit", message::no_such_item);
        const Line other = line_of(*item);
        line.price = line.price / line.factor * other.factor;
        line.unit_level = other.unit_level;
        line.factor = other.factor;
        line.former_price = other.former_price;
        line.retail = other.retail;
        line.new_retail.reset();
    }
    if (auto refused = read_quantity(typed.quantity, line)) return refused;
    if (auto refused = read_worth(typed, shown, line)) return refused;
    if (auto refused = read_expiry(typed.expiry, line)) return refused;
    if (auto refused = read_retail(typed, shown, line)) return refused;
    receipt_.lines[row] = std::move(line);
    return take_foot();
}

}  // namespace purchases
