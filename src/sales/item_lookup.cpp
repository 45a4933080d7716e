#include "sales/item_lookup.h"

#include <limits>

#include "common/numbers.h"

namespace sales {

using database::Connection;
using database::quoted;
using database::Row;
using database::Sql;

namespace {

std::optional<double> number_or_none(const Row& row, std::string_view column) {
    if (row.null(column)) return std::nullopt;
    return row.number(column);
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
    item.period_price = number_or_none(row, "s_price");
    return item;
}

}  // namespace

std::string price_column(int unit_level, int price_level) {
    return "price" + std::to_string(unit_level) + std::to_string(price_level);
}

std::optional<Item> load_item(Connection& connection, std::int64_t code, int unit_level) {
    const auto rows = connection.query(
        Sql("SELECT items.*, IsNull(tmp_price.p_per,0) AS Expr1, tmp_price.s_price FROM items LEFT JOIN "
            "tmp_price ON items.code = tmp_price.icode  where code = ") +
        code);
    if (rows.empty()) return std::nullopt;
    return item_of(rows.front(), unit_level);
}

Lookup look_up(Connection& connection, std::string_view text) {
    std::optional<std::int64_t> code;
    int unit_level = 1;
    const auto bars = connection.query(Sql("select * from barcode where bar = ") + quoted(text));
    for (const Row& row : bars) {
        const std::int64_t item = row.integer("code");
        // Which of two items was meant cannot be guessed: the wrong one would be sold unseen.
        if (code && *code != item) return {Found::shared_barcode, {}};
        if (code) continue;
        code = item;
        const std::int64_t level = row.integer("scode");
        unit_level = level >= 1 && level <= 3 ? static_cast<int>(level) : 1;
    }
    if (!code) code = common::parse_integer(text);
    // Codes are 32-bit; an unknown 13-digit barcode is no code.
    if (!code || *code < 0 || *code > std::numeric_limits<std::int32_t>::max()) return {};
    const auto item = load_item(connection, *code, unit_level);
    if (!item) return {};
    return {Found::item, *item};
}

std::optional<CraftsmanLine> load_craftsman_line(Connection& connection, std::int64_t code, bool is_return) {
    Sql statement = Sql("select * from salver where scode = ") + code;
    if (is_return)
        statement += " and cqty < qty";
    else
        statement += " and cqty > 0";
    const auto rows = connection.query(statement);
    if (rows.empty()) return std::nullopt;
    const Row& row = rows.front();
    CraftsmanLine line;
    line.code = code;
    line.item = row.integer("icode");
    line.price = number_or_none(row, "tot");
    line.left = is_return ? row.number("qty") - row.number("cqty") : row.number("cqty");
    return line;
}

}  // namespace sales
