#include "sales/items.h"

#include <algorithm>
#include <limits>

#include "common/amount.h"
#include "common/numbers.h"
#include "database/reads.h"
#include "sales/messages.h"

namespace sales {

using database::Connection;
using database::quoted;
using database::Result;
using database::Row;
using database::Sql;
using database::Value;

namespace {

std::optional<double> number_or_none(const Row& row, std::string_view column) {
    if (row.null(column)) return std::nullopt;
    return row.number(column);
}

}  // namespace

std::string price_column(int unit_level, int price_level) {
    return "price" + std::to_string(unit_level) + std::to_string(price_level);
}

Sql item_statement(std::int64_t code) {
    return Sql("SELECT ") + item_cards + " where code = " + code;
}

Item item_of(const Row& row, int unit_level) {
    constexpr std::string_view factors[] = {"num1", "NUM2", "NUM3"};
    Item item;
    item.code = row.integer("code");
    item.name = row.text("name");
    item.type = row.integer("itype");
    item.stopped = row.integer("Stop") != 0;
    item.sale_only = row.integer("sale_only") != 0;
    item.unit_level = unit_level;
    item.factor = row.number(factors[unit_level - 1]);
    int level = cost_level;
    for (auto& price : item.prices)
        price = number_or_none(row, price_column(unit_level, level++));
    item.period_percent = row.number("Expr1");
    return item;
}

std::optional<Item> item_of(const Result& cards, int unit_level) {
    if (cards.empty()) return std::nullopt;
    return item_of(cards.front(), unit_level);
}

std::optional<Item> load_item(Connection& connection, std::int64_t code, int unit_level) {
    return item_of(connection.query(item_statement(code)), unit_level);
}

Sql barcode_statement(std::string_view text) {
    return Sql("select * from barcode where bar = ") + quoted(text);
}

Named named_by(const Result& barcodes, std::string_view text) {
    std::optional<std::int64_t> code;
    int unit_level = 1;
    for (const Row& row : barcodes) {
        const std::int64_t item = row.integer("code");
        // A guess between two items would sell the wrong one unnoticed.
        if (code && *code != item) return {Found::shared_barcode};
        if (code) continue;
        code = item;
        unit_level = unit_level_of(row.integer("scode"));
    }
    if (!code) code = common::parse_integer(text);
    // Codes are 32-bit, so an unknown 13-digit barcode is not one.
    if (!code || *code < 0 || *code > std::numeric_limits<std::int32_t>::max()) return {};
    return {Found::item, *code, unit_level};
}

Lookup look_up_item(Connection& connection, std::string_view text) {
    const Named named = named_by(connection.query(barcode_statement(text)), text);
    if (named.found != Found::item) return {named.found, {}};
    const auto item = load_item(connection, named.item, named.unit_level);
    return item ? Lookup{Found::item, *item} : Lookup();
}

std::optional<std::string_view> lookup_refusal(Found found) {
    if (found == Found::nothing) return common::message::wrong_code;
    if (found == Found::shared_barcode) return message::shared_barcode;
    return std::nullopt;
}

Sql craftsman_statement(std::int64_t code, bool is_return) {
    Sql statement = Sql("select * from salver where scode = ") + code;
    if (is_return)
        statement += " and cqty < qty";
    else
        statement += " and cqty > 0";
    return statement;
}

std::optional<CraftsmanLine> craftsman_line_of(const Result& rows, bool is_return) {
    if (rows.empty()) return std::nullopt;
    const Row& row = rows.front();
    CraftsmanLine line;
    line.code = row.integer("scode");
    line.item = row.integer("icode");
    line.price = number_or_none(row, "tot");
    line.left = is_return ? row.number("qty") - row.number("cqty") : row.number("cqty");
    return line;
}

std::optional<CraftsmanLine> load_craftsman_line(Connection& connection, std::int64_t code, bool is_return) {
    return craftsman_line_of(connection.query(craftsman_statement(code, is_return)), is_return);
}

int default_level(std::int64_t main_p) {
    return main_p == 1 ? wholesale_level : retail_level;
}

int unit_level_of(std::int64_t scode) {
    return scode >= 1 && scode <= 3 ? static_cast<int>(scode) : 1;
}

std::string_view unit_name(int unit_level) {
    switch (unit_level) {
        case 2:
            return "عبوة";
        case 3:
            return "كرتونة";
        default:
            return "وحدة";
    }
}

std::optional<double> entry_price(const Item& item, int price_level) {
    const auto level = static_cast<std::size_t>(std::clamp(price_level, retail_level, last_level));
    const std::optional<double> card = item.prices[level - 1];
    if (!card) return std::nullopt;
    return common::Amount(*card * (100 - item.period_percent) / 100).value();
}

bool is_clearance(const Item& item) {
    return item.period_percent > 0;
}

std::optional<std::string_view> factor_refusal(const Item& item) {
    // A factor of 0 or below counts as missing.
    if (item.factor > 0) return std::nullopt;
    switch (item.unit_level) {
        case 2:
            return message::set_packs;
        case 3:
            return message::set_cartons;
        default:
            return message::set_units;
    }
}

std::optional<std::string_view> item_refusal(const Item& item, bool is_return) {
    if (item.stopped) return message::stopped;
    if (is_return && item.sale_only) return message::sale_only;
    return factor_refusal(item);
}

std::optional<ItemInfo> load_item_info(Connection& connection, std::int64_t code) {
    const auto rows = connection.query(Sql("select * from items where code =") + code);
    if (rows.empty()) return std::nullopt;
    const auto& row = rows.front();
    ItemInfo info;
    info.code = row.integer("code");
    info.name = row.text("name");
    info.price11 = common::format_amount(row.number("price11"));
    info.price12 = common::format_amount(row.number("price12"));
    info.price13 = common::format_amount(row.number("price13"));
    info.profit = std::string(message::expected_profit) +
                  common::format_amount(row.number("price12") - row.number("price11"));
    return info;
}

Sql expiries_statement(std::int64_t item) {
    return Sql("SELECT edate  From stk WHERE stk.icode=") + item;
}

StockShown stock_shown(const Value& sum, const Result& expiries) {
    StockShown shown;
    shown.quantity = database::is_null(sum) ? std::string(message::stock_zero)
                                            : std::string(message::stock_quantity) +
                                                  common::format_quantity(database::number_of(sum));
    std::vector<std::string> undated;
    for (const Row& row : expiries) {
        const std::string mark(message::expiry_mark);
        // The far-future date that stands for "no expiry" would mislead the cashier.
        if (row.null("edate") || row.moment("edate").date == common::no_expiry)
            undated.push_back(mark + std::string(message::no_expiry_date));
        else
            shown.expiries.push_back(mark + common::date_text(row.moment("edate").date));
    }
    std::sort(shown.expiries.begin(), shown.expiries.end());
    shown.expiries.insert(shown.expiries.end(), undated.begin(), undated.end());
    return shown;
}

StockShown load_stock_shown(Connection& connection, std::int64_t item, std::int64_t store) {
    Value sum;
    StockShown shown;
    database::Reads reads;
    reads.add(Sql("SELECT Sum(stk.quan) AS xq From stk WHERE stk.icode=") + item + " AND stk.stcode=" + store,
              [&](const Result& rows) { sum = database::first_cell(rows); });
    reads.add(expiries_statement(item), [&](const Result& rows) { shown = stock_shown(sum, rows); });
    reads.run(connection);
    return shown;
}

}  // namespace sales
