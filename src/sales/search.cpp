#include "sales/search.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/text.h"
#include "sales/entry.h"

namespace sales {

using database::Fragment;
using database::quoted;
using database::Row;
using database::Sql;

namespace {

// The filters after GROUP BY: the first opens the clause, the others continue it.
class Having {
  public:
    template <typename Value>
    void add(Fragment opening, Fragment joining, const Value& value) {
        clause_ = clause_ ? *clause_ + joining + value : Sql(opening) + value;
    }
    void add(Fragment opening, Fragment joining) { clause_ = clause_ ? *clause_ + joining : Sql(opening); }
    bool open() const { return clause_.has_value(); }
    Sql append_to(Sql statement) const { return clause_ ? std::move(statement) + *clause_ : statement; }

  private:
    std::optional<Sql> clause_;
};

// The item code that the code filter means: a barcode's item, else the number itself.
std::optional<std::int64_t> filter_code(database::Connection& connection, const std::string& typed) {
    const Entry entry = read_entry(typed);
    if (entry.text.empty()) return std::nullopt;
    const auto bars = connection.query(Sql("select * from barcode where bar =") + quoted(entry.text + " "));
    if (!bars.empty()) return bars.front().integer("code");
    return common::parse_integer(entry.text);
}

FoundItem found_item(const Row& row) {
    constexpr std::string_view columns[3][2] = {
        {"price12", "price13"}, {"price22", "price23"}, {"price32", "price33"}};
    FoundItem item;
    item.code = row.integer("code");
    item.name = row.text("name");
    item.type = row.integer("itype");
    item.stock = common::format_quantity(row.number("s1"));
    item.stopped = row.integer("stop") != 0;
    for (std::size_t unit = 0; unit < 3; ++unit)
        for (std::size_t level = 0; level < 2; ++level)
            item.prices[unit][level] = common::format_amount(row.number(columns[unit][level]));
    item.retail = item.prices[0][0];
    item.wholesale = item.prices[0][1];
    return item;
}

}  // namespace

std::optional<Sql> search_statement(database::Connection& connection, const SearchFilters& filters) {
    Having having;
    if (!filters.name.empty()) {
        if (filters.name_contains)
            having.add(" Having (name) like ", " and (name) like ", quoted("%" + filters.name + "%"));
        else
            having.add(" Having name like ", " and name like ", quoted(filters.name + "%"));
    }
    if (!filters.code.empty()) {
        const auto code = filter_code(connection, filters.code);
        if (!code) return std::nullopt;
        having.add(" Having code = ", " and code = ", *code);
    }
    // If the price is the first filter, it is a condition on rows before the grouping.
    std::optional<double> price_before_grouping;
    if (!filters.price.empty()) {
        const auto price = common::parse_number(filters.price);
        if (!price) return std::nullopt;
        if (having.open())
            having.add(" where price12 = ", " and price12 =", *price);
        else
            price_before_grouping = price;
    }
    if (!filters.maker.empty()) {
        const auto maker = common::parse_integer(filters.maker);
        if (!maker) return std::nullopt;
        having.add(" Having fact = ", " and fact = ", *maker);
    }
    if (!filters.type.empty()) {
        const auto type = common::parse_integer(filters.type);
        if (!type) return std::nullopt;
        having.add(" Having itype = ", " and itype = ", *type);
    }
    if (filters.hide_stopped) having.add(" Having isnull(items.stop,0)= 0", " and isnull(items.stop,0) = 0");

    Sql statement(
        "SELECT Sum(stk.quan) AS s1, items.code,items.stop, items.name, items.fact, items.[desc], "
        "items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, "
        "items.price22, items.price23, items.price31, items.price32, "
        "items.price33, items.num1, items.num2, items.num3 "
        ",items.sale_only FROM items LEFT JOIN stk ON items.code = stk.icode");
    if (price_before_grouping)
        statement = std::move(statement) + " where price12 = " + *price_before_grouping;
    statement +=
        " GROUP BY items.code, items.name, items.fact, items.[desc], items.itype, items.mquan, "
        "items.price11, "
        "items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, "
        "items.price32, items.price33, items.num1, items.num2, items.stop,items.num3,items.sale_only";
    return having.append_to(std::move(statement));
}

std::vector<FoundItem> search_items(database::Connection& connection, const Lists& lists,
                                    const SearchFilters& filters) {
    if (filters.empty()) return {};
    const auto statement = search_statement(connection, filters);
    if (!statement) return {};
    std::vector<FoundItem> found;
    for (const Row& row : connection.query(*statement)) {
        found.push_back(found_item(row));
        found.back().group = group_name(lists, found.back().type);
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const FoundItem& a, const FoundItem& b) { return a.name < b.name; });
    return found;
}

}  // namespace sales
