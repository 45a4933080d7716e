#include "goods/labels.h"

#include <map>

#include "common/amount.h"
#include "common/text.h"
#include "sales/items.h"

namespace goods {

using database::Row;
using database::Sql;

namespace {

std::string shop_name(database::Connection& connection) {
    return std::string(common::trim(database::text_of(connection.scalar("select aname from basic"))));
}

printing::Label label(const Row& card, int unit_level, const std::string& shop, const std::string& barcode) {
    printing::Label label;
    label.shop = shop;
    label.name = common::trim(card.text("name"));
    if (unit_level > 1) label.unit = sales::unit_name(unit_level);
    label.price = common::Amount(card.number(sales::price_column(unit_level, sales::retail_level))).text();
    label.barcode = barcode;
    return label;
}

}  // namespace

std::vector<printing::Label> labels_of(database::Connection& connection, const ItemFilter& filter) {
    const Sql condition = condition_of(connection, filter);
    std::map<std::int64_t, std::string> barcodes;
    for (const Row& row : connection.query(Sql("select barcode.code, min(barcode.bar) as bar from barcode "
                                               "inner join items on barcode.code = "
                                               "items.code where isnull(barcode.scode,1) = 1 and ") +
                                           condition + " group by barcode.code"))
        barcodes[row.integer("code")] = common::trim(row.text("bar"));
    const std::string shop = shop_name(connection);
    std::vector<printing::Label> labels;
    for (const Row& row : connection.query(Sql("select * from items where ") + condition +
                                           " order by items.[name], items.code")) {
        const std::int64_t code = row.integer("code");
        const auto barcode = barcodes.find(code);
        labels.push_back(
            label(row, 1, shop, barcode == barcodes.end() ? std::to_string(code) : barcode->second));
    }
    return labels;
}

std::vector<printing::Label> label_of(database::Connection& connection, std::int64_t item,
                                      const std::optional<CardBarcode>& barcode) {
    const auto rows = connection.query(Sql("select * from items where code = ") + item);
    if (rows.empty()) return {};
    if (!barcode) return {label(rows.front(), 1, shop_name(connection), std::to_string(item))};
    return {label(rows.front(), barcode->unit_level, shop_name(connection), barcode->text)};
}

}  // namespace goods
