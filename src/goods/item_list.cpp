#include "goods/item_list.h"

#include <map>

#include "common/search.h"
#include "common/text.h"
#include "database/name_search.h"
#include "database/reads.h"
#include "goods/cells.h"
#include "sales/entry.h"
#include "sales/items.h"

namespace goods {

using database::Connection;
using database::Row;
using database::Sql;

namespace {

// Nobody scrolls through more; typing another letter narrows the list.
constexpr int first_thousand = 1000;

Sql in_codes(database::Fragment column, const std::set<std::int64_t>& codes) {
    Sql statement(column);
    statement += " in (-1";
    for (const std::int64_t code : codes)
        statement += Sql(", ") + code;
    return statement + ")";
}

// A code or a barcode selects its item. Digits that also occur in names select those items too.
Sql typed_condition(Connection& connection, const std::string& typed) {
    const std::string code = sales::normalize_scan(typed);
    const database::Result barcodes = connection.query(sales::barcode_statement(code));
    const sales::Named named = sales::named_by(barcodes, code);
    const bool has_words = !common::search_words(typed).empty();
    if (named.found == sales::Found::shared_barcode) {
        std::set<std::int64_t> codes;
        for (const Row& row : barcodes)
            codes.insert(row.integer("code"));
        return in_codes("items.code", codes);
    }
    if (named.found != sales::Found::item)
        return has_words ? database::contains_typed_words("items.name", typed) : Sql("items.code = -1");
    const Sql by_code = Sql("items.code = ") + named.item;
    if (!barcodes.empty() || !has_words) return by_code;
    return Sql("(") + by_code + " or " + database::contains_typed_words("items.name", typed) + ")";
}

// `condition` is that of the list. A longer one is not named code by code.
void read_stock(Connection& connection, const Sql& condition, ItemList& list) {
    std::map<std::int64_t, double> stock;
    std::set<std::int64_t> codes;
    for (const ListedItem& item : list.items)
        if (item.stock) codes.insert(item.code);
    if (codes.empty()) return;
    const Sql listed = codes.size() <= first_thousand
                           ? in_codes("icode", codes)
                           : Sql("icode in (select items.code from items where ") + condition + ")";
    for (const Row& row : connection.query(Sql("select icode, sum(quan) as quan from stk where ") + listed +
                                           " group by icode"))
        stock[row.integer("icode")] = row.number("quan");
    for (ListedItem& item : list.items)
        if (const auto held = stock.find(item.code); item.stock && held != stock.end())
            item.stock = held->second;
}

}  // namespace

Sql condition_of(Connection& connection, const ItemFilter& filter) {
    if (!filter.marked.empty()) return in_codes("items.code", filter.marked);
    Sql condition("items.code is not null");
    if (!common::trim(filter.typed).empty())
        condition += Sql(" and ") + typed_condition(connection, filter.typed);
    if (filter.group != 0) condition += Sql(" and items.itype = ") + filter.group;
    if (filter.maker != 0) condition += Sql(" and items.fact = ") + filter.maker;
    return condition;
}

ItemList list_items(Connection& connection, const ItemFilter& filter, ListLength length) {
    ItemList list;
    const Sql condition = condition_of(connection, filter);
    database::Reads reads;
    reads.add(Sql("select count(*) as n from items where ") + condition, [&](const database::Result& rows) {
        list.count = static_cast<std::size_t>(rows.front().integer("n"));
    });
    reads.add(
        (length == ListLength::all ? Sql("select") : Sql("select top ") + first_thousand) +
            " items.code, items.[name], item_types.[name] as group_name, items.price12, items.price11, "
            "items.mquan, items.[stop], items.sale_only from items left join item_types on items.itype = "
            "item_types.code where " +
            condition + " order by items.[name], items.code",
        [&](const database::Result& rows) {
            for (const Row& row : rows) {
                ListedItem item;
                item.code = row.integer("code");
                item.name = row.text("name");
                item.group = common::trim_right(row.text("group_name"));
                item.price = number_or_none(row, "price12");
                item.cost = number_or_none(row, "price11");
                if (row.integer("sale_only") == 0) item.stock = 0;
                item.minimum = number_or_none(row, "mquan");
                item.is_stopped = row.integer("stop") != 0;
                list.items.push_back(std::move(item));
            }
        });
    reads.run(connection);
    read_stock(connection, condition, list);
    return list;
}

}  // namespace goods
