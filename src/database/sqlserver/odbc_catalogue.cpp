#include "database/sqlserver/odbc_catalogue.h"

#include <algorithm>
#include <array>

#include "common/text.h"
#include "database/sqlserver/odbc_text.h"

namespace database {

namespace {

// A column's type as a statement declares it: "nvarchar(100)", "numeric(18, 0)", "datetime".
std::string declared_type(const Row& column) {
    const std::string type = common::lower_ascii(column.text("type_name"));
    const std::int64_t bytes = column.integer("max_length");
    if (type.ends_with("char") || type.ends_with("binary")) {
        const std::int64_t width = type.starts_with('n') ? bytes / 2 : bytes;
        return type + "(" + (bytes < 0 ? "max" : std::to_string(width)) + ")";
    }
    if (type == "numeric" || type == "decimal")
        return type + "(" + column.text("precision") + ", " + column.text("scale") + ")";
    return type;
}

}  // namespace

Sql catalogue_statement(const std::vector<std::string>& tables) {
    Sql statement(
        "select object_name(c.object_id) as table_name, c.name as column_name, t.name as type_name, "
        "c.max_length, c.precision, c.scale, k.key_ordinal from sys.columns c left join sys.types t on "
        "t.user_type_id = c.system_type_id left join (select x.object_id, x.column_id, x.key_ordinal from "
        "sys.index_columns x inner join sys.indexes i on i.object_id = x.object_id and i.index_id = "
        "x.index_id "
        "where i.is_primary_key = 1) k on k.object_id = c.object_id and k.column_id = c.column_id where "
        "c.object_id in (0");
    for (const std::string& table : tables)
        statement = std::move(statement) + ", object_id(" + quoted("[" + table + "]") + ")";
    return std::move(statement) + ") order by c.object_id, c.column_id";
}

TablesByName tables_in(const Result& catalogue) {
    std::map<std::string, Connection::Table> found;
    std::map<std::string, std::map<std::int64_t, std::string>> keys;  // columns by their place in the key
    for (const Row& column : catalogue) {
        const std::string name = common::lower_ascii(column.text("table_name"));
        Connection::Table& table = found[name];
        table.columns.push_back(column.text("column_name"));
        table.types.push_back(declared_type(column));
        if (!column.null("key_ordinal")) keys[name][column.integer("key_ordinal")] = table.columns.back();
    }
    TablesByName tables;
    for (auto& [name, table] : found) {
        for (const auto& [place, column] : keys[name])
            table.key.push_back(column);
        tables[name] = std::make_shared<const Connection::Table>(std::move(table));
    }
    return tables;
}

bool may_change_tables(std::string_view statement) {
    constexpr std::array<std::string_view, 7> harmless = {"select", "insert", "update",  "delete",
                                                          "begin",  "commit", "rollback"};
    for (std::size_t at = 0; at < statement.size();) {
        std::size_t end = at;
        while (end < statement.size() && statement[end] != ';') {
            const char c = statement[end];
            end = c == '\'' || c == '"' || c == '[' ? end_of_quoted(statement, end) : end + 1;
        }
        const std::string_view part = common::trim(statement.substr(at, end - at));
        at = end + 1;
        if (part.empty()) continue;
        if (std::none_of(harmless.begin(), harmless.end(), [&](std::string_view word) {
                return common::equal_ignoring_case(part.substr(0, word.size()), word);
            }))
            return true;
    }
    return false;
}

}  // namespace database
