#include "sales/invoice.h"

#include <cmath>
#include <numeric>

#include "common/numbers.h"
#include "sales/items.h"

namespace sales {

namespace {

std::int64_t code_value(const std::string& cell) {
    return common::parse_integer(cell).value_or(0);
}

std::optional<double> optional_value(const std::string& cell) {
    return common::parse_number(cell);
}

// The cells show price and discount with two decimals. Restores the decimals that were lost, so that the line
// adds up to its total. A total that rounding does not explain is left alone.
void restore_total(Line& line, common::Amount total) {
    constexpr double lost = 0.005;  // at most, of a figure with two decimals
    constexpr double margin = 1e-9;
    const double difference = line.gross() - line.discount - total.value();
    if (line.total() == total || line.quantity <= 0) return;
    if (line.discount > 0 && std::abs(difference) <= 2 * lost + margin)
        line.discount += difference;
    else if (std::abs(difference) <= lost * line.quantity + 2 * lost + margin)
        line.price -= difference / line.quantity;
}

}  // namespace

int ctype_of(KindOption kind) {
    constexpr int codes[] = {0, 2, 3};
    return codes[static_cast<std::size_t>(kind)];
}

int stype_of(PaymentOption payment) {
    constexpr int codes[] = {0, 0, 1, 2};
    return codes[static_cast<std::size_t>(payment)];
}

KindOption kind_of(std::int64_t ctype) {
    if (ctype == 2) return KindOption::return_;
    return ctype == 3 ? KindOption::third : KindOption::sale;
}

PaymentOption payment_of(std::int64_t vcode, std::int64_t stype) {
    if (vcode != walk_in_customer) return PaymentOption::account;
    if (stype == 1) return PaymentOption::card;
    return stype == 2 ? PaymentOption::tips : PaymentOption::cash;
}

std::array<std::string, column::count> Line::cells(int number) const {
    std::array<std::string, column::count> cell;
    cell[column::number] = std::to_string(number);
    if (item_code) cell[column::code] = std::to_string(*item_code);
    cell[column::name] = name;
    cell[column::group] = group;
    cell[column::quantity] = common::format_quantity(quantity);
    cell[column::price] = common::format_amount(price);
    cell[column::discount_value] = common::format_amount(discount);
    cell[column::discount_percent] = common::format_amount(discount_percent());
    cell[column::total] = total().text();
    cell[column::unit_factor] = common::shortest_text(factor);
    cell[column::unit_code] = std::to_string(unit_code);
    cell[column::salver_code] = std::to_string(salver_code);
    cell[column::unit_name] = unit_name;
    cell[column::source_kind] = std::to_string(static_cast<int>(source_kind));
    cell[column::source_store] = std::to_string(source_store);
    cell[column::clearance] = clearance ? "1" : "0";
    if (expiry) cell[column::expiry] = common::date_text(*expiry);
    if (balance) cell[column::balance] = common::format_quantity(*balance);
    cell[column::stock_kept] = stock_kept ? "1" : "0";
    cell[column::unit_cost] = common::shortest_text(unit_cost);
    if (returnable) cell[column::returnable] = common::shortest_text(*returnable);
    return cell;
}

Line Line::from_cells(const std::array<std::string, column::count>& cell) {
    Line line;
    line.item_code = common::parse_integer(cell[column::code]);
    line.name = cell[column::name];
    line.group = cell[column::group];
    line.quantity = common::numeric_value(cell[column::quantity]);
    line.price = common::numeric_value(cell[column::price]);
    line.discount = common::numeric_value(cell[column::discount_value]);
    // A line without a factor would move no stock, so its quantity counts as base units.
    const double factor = common::numeric_value(cell[column::unit_factor]);
    line.factor = factor > 0 ? factor : 1;
    line.unit_code = unit_level_of(code_value(cell[column::unit_code]));
    line.salver_code = code_value(cell[column::salver_code]);
    line.unit_name = cell[column::unit_name];
    line.source_kind = code_value(cell[column::source_kind]) == static_cast<int>(SourceKind::other_store)
                           ? SourceKind::other_store
                           : SourceKind::selling_store;
    line.source_store = code_value(cell[column::source_store]);
    line.clearance = cell[column::clearance] == "1";
    if (const auto date = common::parse_moment(cell[column::expiry])) line.expiry = date->date;
    line.balance = optional_value(cell[column::balance]);
    line.stock_kept = cell[column::stock_kept] == "1";
    line.unit_cost = common::numeric_value(cell[column::unit_cost]);
    line.returnable = optional_value(cell[column::returnable]);
    if (const auto total = optional_value(cell[column::total])) restore_total(line, common::Amount(*total));
    return line;
}

void Line::set_quantity(double new_quantity) {
    quantity = new_quantity;
    if (!returnable || sold_quantity <= 0 || sold_discount == 0) return;
    discount = sold_discount * (quantity / sold_quantity);
    // Shares rounded one by one would not add up. So a return is worth the value of all goods returned so far
    // including it, less their value before it.
    const double price_paid = price - sold_discount / sold_quantity;
    const double before = sold_quantity - *returnable;
    const common::Amount due =
        common::Amount((before + quantity) * price_paid) - common::Amount(before * price_paid);
    if (total() != due) discount = gross() - due.value();
}

void Invoice::sell_from(std::int64_t new_store) {
    for (Line& line : lines) {
        // These were confirmed for the stock of the former store.
        if (new_store != store) line.below_stock = line.dates_checked = false;
        if (line.is_supplied() && line.source_store == new_store)
            line.source_kind = SourceKind::selling_store;
    }
    store = new_store;
}

common::Amount Invoice::total() const {
    return std::accumulate(lines.begin(), lines.end(), common::Amount(),
                           [](common::Amount sum, const Line& line) { return sum + line.total(); });
}

common::Amount Invoice::cost() const {
    return std::accumulate(lines.begin(), lines.end(), common::Amount(),
                           [](common::Amount sum, const Line& line) { return sum + line.cost(); });
}

void Invoice::set_discount(double value) {
    discount_percent = percent_of(value, total().value());
}

void Invoice::grant_as_it_is() {
    granted_percent = discount_percent;
    for (Line& line : lines)
        line.grant_as_it_is();
}

std::uint32_t grid_colour(KindOption kind) {
    constexpr std::uint32_t colours[] = {0xECFFFF, 0xC0FFC0, 0xC0E0FF};
    return colours[static_cast<std::size_t>(kind)];
}

std::string_view kind_caption(KindOption kind, PaymentOption payment) {
    const bool on_account = payment == PaymentOption::account;
    if (kind == KindOption::return_) return on_account ? "مرتجع الي" : "مرتجع نقدي";
    return on_account ? "بيع الي" : "بيع نقدي";
}

bool moves_cash(PaymentOption payment) {
    return payment == PaymentOption::cash || payment == PaymentOption::tips;
}

std::string_view payment_caption(PaymentOption payment) {
    constexpr std::array<std::string_view, 4> captions = {"آجل", "نقدي", "بطاقة إئتمان", "أكراميات"};
    return captions[static_cast<std::size_t>(payment)];
}

bool payment_enabled(PaymentOption payment, KindOption kind) {
    return kind == KindOption::sale || payment == PaymentOption::account || payment == PaymentOption::cash;
}

PaymentOption payment_after_switch(PaymentOption payment, KindOption kind) {
    if (payment_enabled(payment, kind)) return payment;
    return payment == PaymentOption::card ? PaymentOption::account : PaymentOption::cash;
}

std::string_view line_heading(int index) {
    switch (index) {
        case column::number:
            return "م";
        case column::code:
            return "كود";
        case column::name:
            return "اسم الصنف";
        case column::group:
            return "مجموعة";
        case column::quantity:
            return "كمية";
        case column::unit_name:
            return "وحدة";
        case column::price:
            return "سعر";
        case column::discount_value:
            return "خصم ق";
        case column::discount_percent:
            return "خصم %";
        case column::total:
            return "اجمالي";
        case column::balance:
            return "رصيد";
        default:
            return "";
    }
}

}  // namespace sales
