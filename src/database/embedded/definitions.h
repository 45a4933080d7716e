// Creates, changes and drops tables, indexes and views of an embedded shop.
#pragma once

#include <sqlite3.h>

#include <set>
#include <string>

#include "database/embedded/catalog.h"
#include "database/tsql/scanner.h"
#include "database/tsql/syntax.h"

namespace database::embedded {

class Definitions {
  public:
    // `values` are those of the statement.
    Definitions(sqlite3* engine, Catalog& catalog, const std::vector<Value>& values)
        : engine_(engine), catalog_(catalog), values_(values) {}

    // Each runs one statement, wholly or not at all, and updates the catalog. Throws Error:
    // 42S01 for a table that exists, 42S02 for one that does not, 42S21 and 42S22 for columns likewise.
    void apply(const tsql::CreateTable& create);
    void apply(const tsql::CreateIndex& create);
    void apply(const tsql::CreateView& create);
    void apply(const tsql::Drop& drop);
    void apply(const tsql::AddColumns& add);
    void apply(const tsql::AlterColumn& alter);
    void apply(const tsql::DropColumn& drop);

    // Creates the engine's own indexes for every table that has the columns.
    void add_own_indexes();
    void add_own_indexes(const Table& table);

  private:
    Column column_of(const tsql::ColumnDefinition& definition);
    const Table& changeable(const std::string& name);
    std::string table_sql(const Table& table) const;
    std::string column_sql(const Column& column) const;
    // Rebuilds a table with other columns and keeps its rows; `values` are the new columns' values in terms
    // of the old columns.
    void rebuild(const Table& from, const Table& to, const std::vector<std::string>& values);
    bool has_more_rows(const Table& table, int than);
    void rename_type(const Table& table);
    void check_identifier(const std::string& name) const;
    void drop_index(const tsql::Drop& drop);

    sqlite3* engine_;
    Catalog& catalog_;
    const std::vector<Value>& values_;
    std::set<std::size_t> pinned_;
};

// Names between double quotes, joined by commas.
std::string name_list(const std::vector<std::string>& names);
// The name of an index in the file. On a server index names are unique per table, here per file.
std::string index_name(const std::string& table, const std::string& index);

// Orphans are barcodes without an item. Every start deletes them, and searching all barcodes of a large shop
// would be the longest part of the start, so the file remembers whether there can be any.

// Returns true if the statement is, to the letter, the upgrade list's deletion.
bool is_orphan_deletion(const tsql::Tokens& statement);

// From now on triggers note in the file that a barcode or an item has changed since the last deletion,
// whoever changes it. Does nothing if one of the tables is missing or the triggers exist.
void watch_for_orphans(sqlite3* engine, Catalog& catalog);

// Returns false if nothing has changed since note_no_orphans().
bool can_have_orphans(sqlite3* engine, const Catalog& catalog);
void note_no_orphans(sqlite3* engine);

}  // namespace database::embedded
