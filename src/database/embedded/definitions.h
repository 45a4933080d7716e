// Tables, indexes and views of an embedded shop: made, changed and dropped.
#pragma once

#include <sqlite3.h>

#include <set>
#include <string>

#include "database/embedded/catalog.h"
#include "database/tsql/syntax.h"

namespace database::embedded {

class Definitions {
  public:
    // `values` are those of the statement.
    Definitions(sqlite3* engine, tsql::Catalog& catalog, const std::vector<Value>& values)
        : engine_(engine), catalog_(catalog), values_(values) {}

    // Each does one statement, whole or not at all, and leaves the catalog as the file is. Throws Error:
    // 42S01 for a table that exists, 42S02 for one that does not, 42S21 and 42S22 for columns likewise.
    void apply(const tsql::CreateTable& create);
    void apply(const tsql::CreateIndex& create);
    void apply(const tsql::CreateView& create);
    void apply(const tsql::Drop& drop);
    void apply(const tsql::AddColumns& add);
    void apply(const tsql::AlterColumn& alter);
    void apply(const tsql::DropColumn& drop);

    // Makes the indexes that the engine adds by itself wherever their table and columns are there.
    void add_own_indexes();
    void add_own_indexes(const tsql::Table& table);

  private:
    tsql::Column column_of(const tsql::ColumnDefinition& definition);
    const tsql::Table& changeable(const std::string& name);
    std::string table_sql(const tsql::Table& table) const;
    std::string column_sql(const tsql::Column& column) const;
    // Makes a table anew with other columns and its rows; `values` are the new columns' in terms of the old
    // ones.
    void rebuild(const tsql::Table& from, const tsql::Table& to, const std::vector<std::string>& values);
    bool has_more_rows(const tsql::Table& table, int than);
    void rename_type(const tsql::Table& table);
    void add_identity(const std::string& table, const std::string& column);
    void check_identifier(const std::string& name) const;
    void drop_index(const tsql::Drop& drop);

    sqlite3* engine_;
    tsql::Catalog& catalog_;
    const std::vector<Value>& values_;
    std::set<std::size_t> pinned_;
};

// Names between double quotes, joined by commas.
std::string name_list(const std::vector<std::string>& names);
// What an index is called in the file: names of indexes are a table's on the server, and the whole file's
// here.
std::string index_name(const std::string& table, const std::string& index);

}  // namespace database::embedded
