// Imports of items: cards as they are, and lines that change them.
#include <algorithm>

#include "common/text.h"
#include "goods/cells.h"
#include "goods/import_writing.h"
#include "sales/items.h"

namespace goods {

using database::Row;
using database::Sql;

namespace {

std::optional<double> factor(const Row& row, std::string_view column) {
    return row.number(column) > 0 ? std::optional(row.number(column)) : std::nullopt;
}

CardNow card_of(const Row& row) {
    CardNow card;
    card.name = common::trim_right(row.text("name"));
    card.maker = common::trim_right(row.text("maker_name"));
    card.group = common::trim_right(row.text("group_name"));
    card.description = common::trim_right(row.text("desc"));
    card.minimum = number_or_none(row, "mquan");
    card.pack = factor(row, "num2");
    card.carton = factor(row, "num3");
    card.is_service = row.integer("sale_only") != 0;
    for (int unit = 1; unit <= units; ++unit)
        card.prices[static_cast<std::size_t>(unit) - 1] = level_prices(row, unit);
    return card;
}

constexpr std::string_view barcode_columns[units] = {"barcode", "pack_barcode", "carton_barcode"};

}  // namespace

// A few items are read by their codes. For many, one statement reads all items of the shop.
std::map<std::int64_t, CardNow> cards_now(database::Connection& connection,
                                          const std::set<std::int64_t>& codes) {
    std::map<std::int64_t, CardNow> cards;
    if (codes.empty()) return cards;
    Sql condition(" where items.code is not null");
    constexpr std::size_t most_asked = 500;
    if (codes.size() <= most_asked) {
        condition = Sql(" where items.code in (-1");
        for (const std::int64_t code : codes)
            condition += Sql(",") + code;
        condition += ")";
    }
    for (const Row& row : connection.query(
             Sql("select items.*, item_types.[name] as group_name, makers.[name] as maker_name from items "
                 "left "
                 "join item_types on items.itype = item_types.code left join makers on items.fact = "
                 "makers.code") +
             condition))
        if (codes.contains(row.integer("code"))) cards.emplace(row.integer("code"), card_of(row));
    for (const Row& row : connection.query(
             Sql("select barcode.code, barcode.bar, barcode.scode from barcode inner join items on "
                 "barcode.code = items.code") +
             condition))
        if (const auto card = cards.find(row.integer("code")); card != cards.end())
            card->second.barcodes.push_back({std::string(common::trim_right(row.text("bar"))),
                                             sales::unit_level_of(row.integer("scode"))});
    return cards;
}

std::vector<NewPrice> prices_of(const ItemLine& line, const CardNow& card) {
    std::vector<NewPrice> prices;
    for (int unit = 1; unit <= units; ++unit) {
        const auto at = static_cast<std::size_t>(unit) - 1;
        for (int level = 1; level <= price_levels; ++level) {
            if (!line.has(sales::price_column(unit, level))) continue;
            const NewPrice price{line.code, unit, level,
                                 line.prices[at][static_cast<std::size_t>(level) - 1]};
            prices.push_back(price);
            for (const ChangedPrice& lowered : lowered_with(price, card.prices[at]))
                if (!line.has(sales::price_column(unit, lowered.price.price_level)))
                    prices.push_back(lowered.price);
        }
    }
    return prices;
}

std::vector<CardBarcode> new_barcodes(const ItemLine& line, const CardNow& card) {
    std::vector<CardBarcode> barcodes;
    for (int unit = 1; unit <= units; ++unit)
        for (const std::string& barcode : line.barcodes[static_cast<std::size_t>(unit) - 1]) {
            const bool is_there = std::ranges::any_of(card.barcodes, [&](const CardBarcode& one) {
                return common::equal_ignoring_case(one.text, barcode);
            });
            if (!is_there) barcodes.push_back({barcode, unit});
        }
    return barcodes;
}

std::optional<Words> unit_fault(const ItemLine& line, const CardNow& card) {
    for (int unit = 2; unit <= units; ++unit) {
        if ((unit == 2 ? card.pack : card.carton) || (unit == 2 ? line.pack : line.carton)) continue;
        const bool has_barcode = line.has(barcode_columns[unit - 1]);
        const bool has_price = std::ranges::any_of(
            prices_of(line, card), [&](const NewPrice& price) { return price.unit_level == unit; });
        if (has_barcode || has_price)
            return Words{std::string(has_barcode ? "a barcode" : "a price") +
                             " for a unit without its number of base units",
                         "باركود أو سعر لعبوة أو كرتونة بدون عدد وحداتها"};
    }
    return std::nullopt;
}

}  // namespace goods
