#include "support/tds_catalogue.h"

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "common/text.h"
#include "database/tsql/parser.h"

namespace test::tds {

namespace tsql = database::tsql;
using database::Connection;
using database::Error;
using database::Result;
using database::Value;

namespace {

std::optional<Connection::Table> table_of(Connection& shop, std::string_view name) {
    try {
        return shop.describe(name);
    } catch (const Error&) {
        return {};
    }
}

Result made(std::vector<std::string> names, std::vector<std::vector<Value>> rows) {
    const auto columns = std::make_shared<const database::Columns>(std::move(names));
    std::vector<database::Row> whole;
    for (auto& cells : rows)
        whole.emplace_back(columns, std::move(cells));
    return {columns, std::move(whole)};
}

// Returns true if a value can be sent as the type without loss.
bool fits(const Type& type, const Value& value) {
    if (database::is_null(value)) return true;
    const bool is_text = std::holds_alternative<std::string>(value);
    switch (type.kind) {
        case Type::text:
            return is_text && database::text_of(value).size() <= static_cast<std::size_t>(type.size) * 2;
        case Type::large_text:
            return is_text;
        case Type::moment:
            return std::holds_alternative<common::Moment>(value);
        case Type::bit:
        case Type::whole: {
            const auto* whole = std::get_if<std::int64_t>(&value);
            if (whole == nullptr) return false;
            const double most = std::ldexp(1.0, type.size * 8 - (type.size == 1 ? 0 : 1));
            return type.size == 8 || std::abs(static_cast<double>(*whole)) < most;
        }
        default:
            return !is_text && !std::holds_alternative<common::Moment>(value);
    }
}

// The declared types of a query's columns; an empty text for a column that is not from a table. Empty if the
// columns cannot be determined.
std::vector<std::string> declared_types(Connection& shop, const tsql::Select& query) {
    std::vector<std::string> types;
    const auto add_all = [&](std::string_view alias) {
        for (const tsql::Source& source : query.from) {
            if (!alias.empty() && !common::equal_ignoring_case(alias, source.alias)) continue;
            const auto table = source.query ? std::nullopt : table_of(shop, source.table);
            if (!table) return false;
            types.insert(types.end(), table->types.begin(), table->types.end());
        }
        return true;
    };
    const auto type_of_column = [&](const tsql::Expression& column) -> std::string {
        for (const tsql::Source& source : query.from) {
            if (source.query) continue;
            if (!column.table.empty() && !common::equal_ignoring_case(column.table, source.alias)) continue;
            const auto table = table_of(shop, source.table);
            if (!table) continue;
            for (std::size_t i = 0; i < table->columns.size(); ++i)
                if (common::equal_ignoring_case(table->columns[i], column.name)) return table->types[i];
        }
        return {};
    };
    for (const tsql::Item& item : query.items) {
        if (item.value->kind == tsql::Expression::Kind::all) {
            if (!add_all(item.value->table)) return {};
        } else if (item.value->kind == tsql::Expression::Kind::column) {
            types.push_back(type_of_column(*item.value));
        } else {
            types.emplace_back();
        }
    }
    return types;
}

std::vector<std::string> names_in(const std::filesystem::path& file, const char* kind) {
    sqlite3* engine = nullptr;
    const int opened = sqlite3_open_v2(file.c_str(), &engine, SQLITE_OPEN_READONLY, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> closing(engine, sqlite3_close);
    sqlite3_busy_timeout(engine, 5000);  // a log being recovered or closed locks every reader out
    sqlite3_stmt* statement = nullptr;
    if (opened != SQLITE_OK ||
        sqlite3_prepare_v2(engine,
                           "select name from sqlite_schema where type = ?1 and name not like '%.%' and name "
                           "not like 'sqlite_%' order by name",
                           -1, &statement, nullptr) != SQLITE_OK)
        throw Error("HY000", "the catalogue cannot be read", "");
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> finalizing(statement, sqlite3_finalize);
    sqlite3_bind_text(statement, 1, kind, -1, SQLITE_STATIC);
    std::vector<std::string> names;
    while (sqlite3_step(statement) == SQLITE_ROW)
        names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    return names;
}

}  // namespace

std::vector<Type> types_of(Connection& shop, const Statement& statement, const Result& result) {
    std::vector<std::string> declared;
    try {
        const tsql::Tokens tokens = tsql::tokenize(statement.text, statement.values);
        std::set<std::size_t> pinned;
        const tsql::Statement tree = tsql::Parser(statement.text, tokens, pinned).statement();
        if (const auto* select = std::get_if<std::unique_ptr<tsql::Select>>(&tree))
            declared = declared_types(shop, **select);
    } catch (const Error&) {
        // A question to the catalogue.
    }
    declared.resize(declared.size() == result.columns().size() ? declared.size() : 0);
    std::vector<Type> types;
    for (std::size_t i = 0; i < result.columns().size(); ++i) {
        std::vector<const Value*> values;
        for (const auto& row : result)
            values.push_back(&row.cells()[i]);
        if (i < declared.size() && !declared[i].empty()) {
            const Type type = type_of(declared[i]);
            if (std::all_of(values.begin(), values.end(), [&](const Value* v) { return fits(type, *v); })) {
                types.push_back(type);
                continue;
            }
        }
        types.push_back(type_of(values));
    }
    return types;
}

namespace {

// What sys.columns says about a type.
struct Width {
    std::int64_t bytes, precision, scale;
};

Width width_of(const Type& type, bool is_wide) {
    switch (type.kind) {
        case Type::text:
            return {type.size * (is_wide ? 2 : 1), 0, 0};
        case Type::large_text:
            return {-1, 0, 0};
        case Type::numeric:
            return {9, type.precision, type.scale};
        default:
            return {type.size, 0, 0};
    }
}

// The answer to the program's question about the columns of tables, whose names are the texts in it.
Result columns_of(Connection& shop, std::string_view statement) {
    std::vector<std::vector<Value>> rows;
    for (std::size_t at = statement.find('\''); at != statement.npos; at = statement.find('\'', at + 1)) {
        const std::size_t end = statement.find('\'', at + 1);
        const std::string name(statement.substr(at + 2, end - at - 3));  // without its brackets
        at = end;
        const auto table = table_of(shop, name);
        for (std::size_t i = 0; table && i < table->columns.size(); ++i) {
            const std::string declared = common::lower_ascii(table->types[i]);
            const Width width = width_of(type_of(declared), declared.starts_with('n'));
            const auto key = std::find(table->key.begin(), table->key.end(), table->columns[i]);
            rows.push_back({name, table->columns[i], declared.substr(0, declared.find('(')), width.bytes,
                            width.precision, width.scale,
                            key == table->key.end() ? Value() : Value(key - table->key.begin() + 1)});
        }
    }
    return made({"table_name", "column_name", "type_name", "max_length", "precision", "scale", "key_ordinal"},
                std::move(rows));
}

}  // namespace

std::optional<Connection::Outcome> ask_catalogue(Connection& shop, const std::filesystem::path& file,
                                                 std::string_view statement) {
    const std::string text = common::lower_ascii(common::trim(statement));
    if (text.starts_with("select object_name(c.object_id) as table_name"))
        return Connection::Outcome{columns_of(shop, statement), 0};
    if (text == "select table_name,column_name from information_schema.columns") {
        std::vector<std::vector<Value>> columns;
        for (const std::string& table : shop.tables())
            for (const std::string& column : shop.describe(table).columns)
                columns.push_back({table, column});
        return Connection::Outcome{made({"table_name", "column_name"}, std::move(columns)), 0};
    }
    std::vector<std::string> names;
    if (text == "select name from sysobjects where xtype = 'v'") {
        names = names_in(file, "view");
    } else if (text == "select name from sysobjects where xtype = 'u'") {
        names = names_in(file, "table");
    } else if (text == "select name from sys.tables where is_ms_shipped = 0 order by name") {
        names = shop.tables();
    } else {
        return {};
    }
    std::vector<std::vector<Value>> rows;
    for (const std::string& name : names)
        rows.push_back({name});
    return Connection::Outcome{made({"name"}, std::move(rows)), 0};
}

}  // namespace test::tds
