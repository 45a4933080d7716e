// What a shop lacks of this version's schema.
#include <algorithm>
#include <array>

#include "common/text.h"
#include "database/schema/schema.h"
#include "database/till_tables.h"
#include "database/tsql/parser.h"

namespace database {

namespace {

using Shape = ColumnsByTable;

void add_columns(Shape& shape, const std::string& table, const std::vector<tsql::ColumnDefinition>& columns) {
    for (const tsql::ColumnDefinition& column : columns)
        shape[common::lower_ascii(table)].insert(common::lower_ascii(column.name));
}

void apply(std::string_view text, Shape& shape) {
    const tsql::Tokens tokens = tsql::tokenize(text, {});
    std::set<std::size_t> pinned;
    const tsql::Statement statement = tsql::Parser(text, tokens, pinned).statement();
    if (const auto* create = std::get_if<tsql::CreateTable>(&statement)) {
        if (!shape.contains(common::lower_ascii(create->table)))
            add_columns(shape, create->table, create->columns);
    } else if (const auto* added = std::get_if<tsql::AddColumns>(&statement)) {
        if (shape.contains(common::lower_ascii(added->table)))
            add_columns(shape, added->table, added->columns);
    } else if (const auto* drop = std::get_if<tsql::Drop>(&statement)) {
        if (drop->what == tsql::Drop::What::table) shape.erase(common::lower_ascii(drop->name));
    }
}

// What a new shop has, except for the columns of its stores.
Shape complete_shape() {
    Shape shape;
    for_each_definition([&](std::string_view statement) {
        try {
            apply(statement, shape);
        } catch (const Error&) {
            // An entry of the list that no server can run.
        }
    });
    return shape;
}

// Nobody can sign in or sell without these.
constexpr std::array<std::string_view, 10> needed = {"barcode", "basic", "cash",   "items", "saledata",
                                                     "sales",   "shift", "stocks", "stk",   "users"};

}  // namespace

ColumnsByTable columns_by_table(Connection& connection, const std::vector<std::string>& tables) {
    ColumnsByTable shape;
    if (!connection.is_embedded()) {
        for (const Row& row :
             connection.query("select table_name,column_name from information_schema.columns"))
            shape[common::lower_ascii(row.text("table_name"))].insert(
                common::lower_ascii(row.text("column_name")));
        return shape;
    }
    for (const std::string& table : tables) {
        try {
            for (const std::string& column : connection.description(table)->columns)
                shape[common::lower_ascii(table)].insert(common::lower_ascii(column));
        } catch (const Error& error) {
            if (error.sqlstate() != no_such_table) throw;
        }
    }
    return shape;
}

bool Missing::is_needed() const {
    return column.empty() && std::find(needed.begin(), needed.end(), table) != needed.end();
}

std::vector<Missing> missing_parts(Connection& connection) {
    const Shape wanted = complete_shape();
    std::vector<std::string> tables;
    for (const auto& [table, columns] : wanted)
        tables.push_back(table);
    const Shape there = columns_by_table(connection, tables);
    std::vector<Missing> missing;
    for (const auto& [table, columns] : wanted) {
        const auto found = there.find(table);
        if (found == there.end()) {
            missing.push_back({table, ""});
            continue;
        }
        for (const std::string& column : columns)
            if (!found->second.contains(column)) missing.push_back({table, column});
    }
    return missing;
}

}  // namespace database
