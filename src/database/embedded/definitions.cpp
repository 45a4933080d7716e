#include "database/embedded/definitions.h"

#include <algorithm>

#include "common/text.h"
#include "database/embedded/collation.h"
#include "database/embedded/engine.h"
#include "database/embedded/writer.h"

namespace database::embedded {

namespace {

// A table of up to so many rows is rebuilt: changing it in place makes the engine read its whole schema
// again.
constexpr int few_rows = 1000;

// The definitions of a table's indexes and triggers.
std::vector<std::string> attached(sqlite3* engine, const std::string& table) {
    std::vector<std::string> found;
    const std::string sql =
        "select sql from sqlite_schema where type in ('index','trigger') and sql is not null "
        "and lower(tbl_name) = lower(" +
        quoted_text(table) + ")";
    const auto collect = [](void* list, int, char** values, char**) {
        static_cast<std::vector<std::string>*>(list)->emplace_back(values[0]);
        return 0;
    };
    const int code = sqlite3_exec(engine, sql.c_str(), collect, &found, nullptr);
    if (code != SQLITE_OK) throw engine_error(engine, code, sql);
    return found;
}

}  // namespace

Column Definitions::column_of(const tsql::ColumnDefinition& definition) {
    Column column;
    column.name = definition.name;
    column.type = definition.type;
    column.not_null = definition.not_null;
    if (definition.default_value) {
        Writer writer(catalog_, values_, pinned_, true);
        column.default_sql = writer.column_default(*definition.default_value, definition.type);
    }
    return column;
}

const Table& Definitions::changeable(const std::string& name) {
    const Table* table = catalog_.find(name);
    if (table == nullptr || table->view) {
        throw Error("42S02", "Cannot find the object \"" + name + "\" because it does not exist.", "");
    }
    return *table;
}

std::string Definitions::column_sql(const Column& column) const {
    const std::string& type = column.type.written;
    // The engine accepts a width that is not a number only between quotes.
    std::string sql = quoted_name(column.name) + " " + (type.ends_with("(max)") ? quoted_name(type) : type);
    if (column.not_null) sql += " NOT NULL";
    if (!column.default_sql.empty()) sql += " DEFAULT (" + column.default_sql + ")";
    if (column.type.is_text()) sql += std::string(" COLLATE ") + collation_name;
    return sql;
}

std::string Definitions::table_sql(const Table& table) const {
    std::string sql = "CREATE TABLE " + quoted_name(table.name) + " (";
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        sql += (i == 0 ? "" : ", ") + column_sql(table.columns[i]);
    if (!table.key.empty()) sql += ", PRIMARY KEY (" + name_list(table.key) + ")";
    return sql + ")";
}

void Definitions::check_identifier(const std::string& name) const {
    if (name.starts_with("sqlite_") || name.find('.') != name.npos) {
        throw Error("42000", "The name '" + name + "' is not available on the embedded engine.", "");
    }
}

void Definitions::apply(const tsql::CreateTable& create) {
    if (catalog_.find(create.table) != nullptr) {
        throw Error("42S01", "There is already an object named '" + create.table + "' in the database.", "");
    }
    check_identifier(create.table);
    Table table;
    table.name = create.table;
    for (const auto& definition : create.columns) {
        if (table.find(definition.name) >= 0) {
            throw Error("42S21",
                        "Column names in each table must be unique. '" + definition.name + "' stands twice.",
                        "");
        }
        table.columns.push_back(column_of(definition));
    }
    if (table.columns.empty()) throw Error("42000", "A table needs a column.", "");
    for (const std::string& name : create.primary_key) {
        const int at = table.find(name);
        if (at < 0) throw Error("42S22", "Invalid column name '" + name + "'.", "");
        Column& column = table.columns[static_cast<std::size_t>(at)];
        column.not_null = true;
        table.key.push_back(column.name);
    }
    execute(engine_, table_sql(table));
    catalog_.load_table(create.table);
    add_own_indexes(catalog_.get(create.table));
}

void Definitions::apply(const tsql::CreateView& create) {
    if (catalog_.find(create.view) != nullptr) {
        throw Error("42S01", "There is already an object named '" + create.view + "' in the database.", "");
    }
    check_identifier(create.view);
    if (create.text.find("*/") != create.text.npos)
        throw Error("42000", "A view's text cannot hold '*/'.", "");
    if (!create.query->order_by.empty() && !create.query->top) {
        throw Error("42000", "The ORDER BY clause is invalid in views, unless TOP is also specified.", "");
    }
    Writer writer(catalog_, values_, pinned_, true);
    const std::string sql = writer.select(*create.query).sql;
    execute(engine_, "CREATE VIEW " + quoted_name(create.view) + " AS " + std::string(view_mark) +
                         create.text + "*/ " + sql);
    catalog_.load_table(create.view);
}

void Definitions::apply(const tsql::Drop& drop) {
    if (drop.what == tsql::Drop::What::index) return drop_index(drop);
    // Only another program makes triggers; the shop keeper must be able to get rid of them.
    if (drop.what == tsql::Drop::What::trigger)
        return execute(engine_, "DROP TRIGGER " + quoted_name(drop.name));
    const Table* table = catalog_.find(drop.name);
    const bool view = drop.what == tsql::Drop::What::view;
    // Ask the engine, because the catalog does not recognise another program's view.
    const bool is_there =
        view && number(engine_, "SELECT count(*) FROM sqlite_schema WHERE type = 'view' AND name = " +
                                    quoted_text(drop.name)) > 0;
    if (view ? !is_there : table == nullptr || table->view != nullptr) {
        throw Error("42S02",
                    "Cannot drop the " + std::string(view ? "view" : "table") + " '" + drop.name +
                        "', because it does not exist.",
                    "");
    }
    execute(engine_,
            (view ? "DROP VIEW " : "DROP TABLE ") + quoted_name(table != nullptr ? table->name : drop.name));
    catalog_.load_table(drop.name);
}

bool Definitions::has_more_rows(const Table& table, int than) {
    return number(engine_, "SELECT count(*) FROM (SELECT 1 FROM " + quoted_name(table.name) + " LIMIT " +
                               std::to_string(than + 1) + ")") > than;
}

void Definitions::apply(const tsql::AddColumns& add) {
    const Table& table = changeable(add.table);
    Table changed = table;
    std::vector<std::string> values;
    for (const Column& column : table.columns)
        values.push_back(quoted_name(column.name));
    bool in_place = true;
    for (const auto& definition : add.columns) {
        if (changed.find(definition.name) >= 0) {
            throw Error("42S21",
                        "Column names in each table must be unique. Column name '" + definition.name +
                            "' in table '" + table.name + "' is specified more than once.",
                        "");
        }
        if (definition.primary_key) throw Error("42000", "A key cannot be added on the embedded engine.", "");
        Column column = column_of(definition);
        const bool has_rows = column.not_null && column.default_sql.empty() && has_more_rows(table, 0);
        if (has_rows) {
            throw Error("42000",
                        "ALTER TABLE only allows columns to be added that can contain nulls, or have a "
                        "DEFAULT definition specified. Column '" +
                            column.name + "' does neither.",
                        "");
        }
        in_place = in_place && !column.not_null && column.default_sql.empty();
        // Existing rows get the default only if the column takes no null.
        values.push_back(column.not_null && !column.default_sql.empty() ? column.default_sql : "NULL");
        changed.columns.push_back(std::move(column));
    }
    const std::size_t before = table.columns.size();
    all_or_none(engine_, [&] {
        if (!in_place || !has_more_rows(table, few_rows)) return rebuild(table, changed, values);
        for (std::size_t i = before; i < changed.columns.size(); ++i) {
            execute(engine_, "ALTER TABLE " + quoted_name(table.name) + " ADD COLUMN " +
                                 column_sql(changed.columns[i]));
        }
    });
    catalog_.load_table(add.table);
    add_own_indexes(catalog_.get(add.table));
}

void Definitions::rebuild(const Table& from, const Table& to, const std::vector<std::string>& values) {
    const std::vector<std::string> others = attached(engine_, from.name);
    const bool has_rows = has_more_rows(from, 0);
    if (has_rows) {
        std::string list;
        for (std::size_t i = 0; i < values.size(); ++i)
            list += ", " + values[i] + " AS c" + std::to_string(i);
        execute(engine_,
                "DROP TABLE IF EXISTS temp.rebuilt; CREATE TEMP TABLE rebuilt AS SELECT rowid AS id" + list +
                    " FROM " + quoted_name(from.name));
    }
    execute(engine_, "DROP TABLE " + quoted_name(from.name));
    execute(engine_, table_sql(to));
    if (has_rows) {
        std::string names = "rowid", list = "id";
        for (std::size_t i = 0; i < to.columns.size(); ++i) {
            names += ", " + quoted_name(to.columns[i].name);
            list += ", c" + std::to_string(i);
        }
        execute(engine_, "INSERT INTO " + quoted_name(to.name) + " (" + names + ") SELECT " + list +
                             " FROM temp.rebuilt; DROP TABLE temp.rebuilt");
    }
    for (const std::string& sql : others)
        execute(engine_, sql);
}

void Definitions::apply(const tsql::AlterColumn& alter) {
    const Table& table = changeable(alter.table);
    const int found = table.find(alter.column.name);
    if (found < 0) {
        throw Error("42S22",
                    "ALTER TABLE ALTER COLUMN failed because column '" + alter.column.name +
                        "' does not exist in table '" + table.name + "'.",
                    "");
    }
    const auto at = static_cast<std::size_t>(found);
    const Column& former = table.columns[at];
    Table changed = table;
    Column& column = changed.columns[at];
    column.type = alter.column.type;
    const bool in_key = std::find(table.key.begin(), table.key.end(), former.name) != table.key.end();
    column.not_null = alter.column.not_null || in_key;
    const bool same = column.type.written == former.type.written && column.not_null == former.not_null;
    if (same) return;
    const bool both_texts = former.type.is_text() && column.type.is_text();
    const bool wider = both_texts && (column.type.length == 0 ||
                                      (former.type.length > 0 && former.type.length <= column.type.length));
    if (wider && column.not_null == former.not_null && has_more_rows(table, few_rows)) {
        rename_type(changed);
    } else {
        Writer writer(catalog_, values_, pinned_, true);
        std::vector<std::string> values;
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            TypedSql value{quoted_name(table.columns[i].name), table.columns[i].type, true, false};
            if (i == at) value = writer.convert(std::move(value), column.type, Writer::Purpose::store);
            values.push_back(std::move(value.sql));
        }
        all_or_none(engine_, [&] { rebuild(table, changed, values); });
    }
    catalog_.load_table(alter.table);
}

// A wider text column is stored the same way: only its definition is rewritten.
void Definitions::rename_type(const Table& table) {
    all_or_none(engine_, [&] {
        const std::int64_t version = number(engine_, "PRAGMA schema_version");
        const struct Writable {
            sqlite3* engine;
            explicit Writable(sqlite3* e) : engine(e) { execute(engine, "PRAGMA writable_schema = ON"); }
            ~Writable() { sqlite3_exec(engine, "PRAGMA writable_schema = RESET", nullptr, nullptr, nullptr); }
        } writable(engine_);
        execute(engine_, "UPDATE sqlite_schema SET sql = " + quoted_text(table_sql(table)) +
                             " WHERE type = 'table' AND name = " + quoted_text(table.name));
        execute(engine_, "PRAGMA schema_version = " + std::to_string(version + 1));
    });
}

void Definitions::apply(const tsql::DropColumn& drop) {
    const Table& table = changeable(drop.table);
    Table changed = table;
    for (const std::string& name : drop.columns) {
        const int at = changed.find(name);
        if (at < 0) {
            throw Error("42S22",
                        "ALTER TABLE DROP COLUMN failed because column '" + name +
                            "' does not exist in table '" + table.name + "'.",
                        "");
        }
        const auto in_key = [&](const std::string& key) { return common::equal_ignoring_case(key, name); };
        if (std::any_of(table.key.begin(), table.key.end(), in_key) || changed.columns.size() == 1) {
            throw Error("42000", "The column '" + name + "' cannot be dropped: the table needs it.", "");
        }
        changed.columns.erase(changed.columns.begin() + at);
    }
    std::vector<std::string> values;
    for (const Column& column : changed.columns)
        values.push_back(quoted_name(column.name));
    all_or_none(engine_, [&] { rebuild(table, changed, values); });
    catalog_.load_table(drop.table);
}

}  // namespace database::embedded
