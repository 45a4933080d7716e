#include "goods/prices.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "database/bulk_insert.h"
#include "database/till_tables.h"
#include "goods/cells.h"

namespace goods {

using database::Command;
using database::Connection;
using database::Null;
using database::Row;
using database::Sql;
using database::Value;

namespace {

constexpr std::size_t codes_at_once = 500;
constexpr std::size_t updates_at_once = 200;

// Columns of items by unit and level.
constexpr database::Fragment columns[units][price_levels] = {
    {"price11", "price12", "price13", "price14", "price15"},
    {"price21", "price22", "price23", "price24", "price25"},
    {"price31", "price32", "price33", "price34", "price35"}};

database::Fragment column_of(const NewPrice& price) {
    return columns[price.unit_level - 1][price.price_level - 1];
}

// The rows of a statement for the items of prices, read in portions: `head` stands before the codes, `tail`
// behind.
std::vector<Row> rows_of_items(Connection& connection, const Sql& head, const std::set<std::int64_t>& codes,
                               const Sql& tail) {
    std::vector<Row> rows;
    for (auto code = codes.begin(); code != codes.end();) {
        Sql statement = head + *code;
        for (std::size_t asked = 1; ++code != codes.end() && asked < codes_at_once; ++asked)
            statement += Sql(",") + *code;
        for (Row& row : connection.query(statement + tail).release())
            rows.push_back(std::move(row));
    }
    return rows;
}

// The cards of items by their codes.
std::map<std::int64_t, Row> read_cards(Connection& connection, const std::vector<NewPrice>& prices) {
    std::set<std::int64_t> codes;
    for (const NewPrice& price : prices)
        codes.insert(price.item);
    std::map<std::int64_t, Row> cards;
    const Sql head(
        "select code,price11,price12,price13,price14,price15,price21,price22,price23,price24,price25,"
        "price31,price32,price33,price34,price35 from items where code in (");
    for (Row& row : rows_of_items(connection, head, codes, Sql(")")))
        cards.emplace(row.integer("code"), std::move(row));
    return cards;
}

std::vector<ChangedPrice> differences(Connection& connection, const std::vector<NewPrice>& prices) {
    const auto cards = read_cards(connection, prices);
    std::vector<ChangedPrice> changed;
    for (const NewPrice& price : prices) {
        const auto card = cards.find(price.item);
        if (card == cards.end()) continue;
        const auto from = number_or_none(card->second, column_of(price).text());
        if (!from || !same_price(*from, price.price)) changed.push_back({price, from});
    }
    std::stable_sort(changed.begin(), changed.end(),
                     [](const auto& one, const auto& other) { return one.price.item < other.price.item; });
    return changed;
}

// One statement for the prices of an item, which must still be those that were read.
using Changes = std::vector<ChangedPrice>::const_iterator;
Command update_of(Changes first, Changes last) {
    Sql set("update items set ");
    Sql where = Sql(" where code = ") + first->price.item;
    for (auto change = first; change != last; ++change) {
        if (change != first) set += ", ";
        set += column_of(change->price);
        set += " = ";
        set += change->price.price;
        where += " and ";
        where += column_of(change->price);
        if (change->from)
            where += Sql(" = ") + *change->from;
        else
            where += " is null";
    }
    return Command(set + where).that_must_change();
}

void write_cards(Connection& connection, const std::vector<ChangedPrice>& changed) {
    std::vector<Command> updates;
    for (auto first = changed.begin(); first != changed.end();) {
        const auto last = std::find_if(first, changed.end(), [&](const ChangedPrice& change) {
            return change.price.item != first->price.item;
        });
        updates.push_back(update_of(first, last));
        first = last;
        if (updates.size() < updates_at_once && first != changed.end()) continue;
        connection.run_all(updates);
        updates.clear();
    }
}

// How many changes the history has of each item. Nobody else can add one meanwhile, because the cards of the
// items have been written in this transaction.
std::map<std::int64_t, std::int64_t> history_lengths(Connection& connection,
                                                     const std::vector<ChangedPrice>& changed) {
    std::set<std::int64_t> codes;
    for (const ChangedPrice& change : changed)
        codes.insert(change.price.item);
    std::map<std::int64_t, std::int64_t> lengths;
    for (const Row& row :
         rows_of_items(connection, Sql("select icode, max(num) as highest from till_price where icode in ("),
                       codes, Sql(") group by icode")))
        lengths[row.integer("icode")] = row.integer("highest");
    return lengths;
}

// The catalogue says whether the table exists, because a failed statement might end the transaction.
void write_history(Connection& connection, const signin::Session& session, const common::Moment& now,
                   const std::vector<ChangedPrice>& changed, std::string_view why) {
    database::unless_table_is_missing([&] {
        connection.description("till_price");
        auto lengths = history_lengths(connection, changed);
        database::BulkInsert rows(connection,
                                  Sql("insert into till_price (icode,num,unit,level,old_price,new_price,"
                                      "moment,user_code,user_name,why)"),
                                  10, database::BulkRows::many);
        for (const auto& [price, from] : changed)
            rows.add({Value(price.item), Value(++lengths[price.item]), Value(std::int64_t{price.unit_level}),
                      Value(std::int64_t{price.price_level}), from ? Value(*from) : Value(Null{}),
                      Value(price.price), Value(now), Value(session.user_code), Value(session.user_name),
                      Value(std::string(why))});
        rows.finish();
    });
}

}  // namespace

bool same_price(double one, double other) {
    return std::fabs(one - other) < 0.00005;
}

std::vector<ChangedPrice> change_prices(Connection& connection, const signin::Session& session,
                                        const common::Moment& now, const std::vector<NewPrice>& prices,
                                        std::string_view why) {
    std::vector<ChangedPrice> changed = differences(connection, prices);
    write_cards(connection, changed);
    if (!changed.empty()) write_history(connection, session, now, changed, why);
    return changed;
}

LevelPrices level_prices(const Row& card, int unit_level) {
    LevelPrices prices;
    for (int level = 1; level <= price_levels; ++level)
        prices[static_cast<std::size_t>(level) - 1] =
            number_or_none(card, sales::price_column(unit_level, level));
    return prices;
}

std::vector<ChangedPrice> lowered_with(const NewPrice& retail, const LevelPrices& now) {
    std::vector<ChangedPrice> lowered;
    if (retail.price_level != sales::retail_level) return lowered;
    const double former = now[sales::retail_level - 1].value_or(0);
    for (int level = sales::retail_level + 1; level <= price_levels; ++level) {
        const auto& price = now[static_cast<std::size_t>(level) - 1];
        const bool was_above = price && *price > former && !same_price(*price, former);
        if (price && !was_above && *price > retail.price && !same_price(*price, retail.price))
            lowered.push_back({{retail.item, retail.unit_level, level, retail.price}, price});
    }
    return lowered;
}

std::vector<NewPrice> costs_of_units(const Row& card, double cost_of_unit) {
    const std::int64_t item = card.integer("code");
    const double before = card.number("price11");
    std::vector<NewPrice> costs = {{item, 1, sales::cost_level, cost_of_unit}};
    for (int unit = 2; unit <= units; ++unit) {
        const double factor = card.number(unit == 2 ? "num2" : "num3");
        const auto cost = number_or_none(card, sales::price_column(unit, sales::cost_level));
        if (!(factor > 0)) continue;
        if (!cost || *cost == 0 || std::fabs(*cost - before * factor) < 0.01)
            costs.push_back({item, unit, sales::cost_level, cost_of_unit * factor});
    }
    return costs;
}

std::vector<PriceHistoryRow> price_history(Connection& connection, std::int64_t item) {
    std::vector<PriceHistoryRow> history;
    database::unless_table_is_missing([&] {
        for (const Row& row : connection.query(
                 Sql("select unit,level,old_price,new_price,moment,user_name,why from till_price where "
                     "icode = ") +
                 item + " order by num desc"))
            history.push_back({{item, static_cast<int>(row.integer("unit")),
                                static_cast<int>(row.integer("level")), row.number("new_price")},
                               number_or_none(row, "old_price"),
                               row.moment("moment"),
                               row.text("user_name"),
                               row.text("why")});
    });
    return history;
}

}  // namespace goods
