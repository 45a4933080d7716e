#include "sales/search.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/search.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/name_search.h"
#include "sales/entry.h"
#include "sales/messages.h"

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

// The item that the code filter means: the one with this barcode, else the one with this code.
struct CodeFilter {
    std::int64_t item = 0;
    bool scanned = false;  // by a barcode or a scale label
    int unit_level = 1;
};

std::optional<CodeFilter> read_code_filter(database::Connection& connection, const std::string& typed) {
    const Entry entry = read_entry(typed);
    if (entry.text.empty()) return std::nullopt;
    const auto bars = connection.query(Sql("select * from barcode where bar =") + quoted(entry.text + " "));
    if (!bars.empty())
        return CodeFilter{bars.front().integer("code"), true, unit_level_of(bars.front().integer("scode"))};
    const auto number = common::parse_integer(entry.text);
    if (!number) return std::nullopt;
    return CodeFilter{*number, entry.form == EntryForm::scale_label};
}

FoundItem found_item(const Row& row) {
    constexpr std::string_view columns[3][2] = {
        {"price12", "price13"}, {"price22", "price23"}, {"price32", "price33"}};
    FoundItem item;
    item.code = row.integer("code");
    item.name = row.text("name");
    item.type = row.integer("itype");
    item.stock = row.number("s1");
    item.stopped = row.integer("stop") != 0;
    for (std::size_t unit = 0; unit < 3; ++unit)
        for (std::size_t level = 0; level < 2; ++level)
            item.prices[unit][level] = row.number(columns[unit][level]);
    constexpr std::string_view factors[] = {"num1", "num2", "num3"};
    for (std::size_t unit = 0; unit < 3; ++unit)
        item.units[unit] = row.number(factors[unit]) > 0;
    return item;
}

// The statement for filters that are not refused.
Sql search_statement(const SearchFilters& filters, const std::optional<CodeFilter>& code) {
    Having having;
    if (filters.has_name()) {
        having.add(" Having ", " and ",
                   filters.name_contains ? database::contains_typed_words("items.name", filters.name)
                                         : database::begins_with_typed("items.name", filters.name));
    }
    if (code) having.add(" Having code = ", " and code = ", code->item);
    // If the price is the first filter, it is a condition on rows before the grouping.
    std::optional<double> price_before_grouping;
    if (!filters.price.empty()) {
        const double price = common::numeric_value(filters.price);
        if (having.open())
            having.add(" where price12 = ", " and price12 =", price);
        else
            price_before_grouping = price;
    }
    if (!filters.maker.empty()) {
        having.add(" Having fact = ", " and fact = ", *common::parse_integer(filters.maker));
    }
    if (!filters.type.empty()) {
        having.add(" Having itype = ", " and itype = ", *common::parse_integer(filters.type));
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

}  // namespace

Entry FoundItem::entry(int unit) const {
    return !scanned.empty() && unit == unit_level ? read_entry(scanned) : chosen_item(code, unit);
}

bool SearchFilters::has_name() const {
    return !common::search_words(name).empty();
}

std::string_view search_refusal(const SearchFilters& filters) {
    if (!filters.price.empty()) {
        const auto price = common::read_number(filters.price, message::wrong_price);
        if (!price.is_good()) return price.refusal;
    }
    for (const std::string* code : {&filters.maker, &filters.type})
        if (!code->empty() && !common::parse_integer(*code)) return common::message::not_in_list;
    return {};
}

FoundItems search_items(database::Connection& connection, const Lists& lists, const SearchFilters& filters) {
    if (filters.empty() || !search_refusal(filters).empty()) return {};
    std::optional<CodeFilter> code;
    if (!filters.code.empty()) {
        code = read_code_filter(connection, filters.code);
        if (!code) return {};
    }
    const std::vector<Row> rows = connection.query(search_statement(filters, code)).release();
    std::vector<std::pair<std::string, std::size_t>> names;
    names.reserve(rows.size());
    for (const Row& row : rows)
        names.emplace_back(row.text("name"), names.size());
    const std::size_t shown = std::min(names.size(), longest_found);
    std::partial_sort(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(shown), names.end());
    FoundItems found{rows.size(), {}};
    for (std::size_t i = 0; i < shown; ++i) {
        FoundItem& item = found.items.emplace_back(found_item(rows[names[i].second]));
        item.group = group_name(lists, item.type);
        if (!code || !code->scanned) continue;
        item.scanned = filters.code;
        item.unit_level = code->unit_level;
    }
    return found;
}

}  // namespace sales
