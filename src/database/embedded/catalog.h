// The tables and views of an embedded shop, kept in memory so that statements are understood without asking
// the file.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/tsql/syntax.h"
#include "database/tsql/tokens.h"

namespace database::tsql {

struct Column {
    std::string name;
    Type type;
    bool not_null = false;
    std::string default_sql;  // in the engine's language; empty without one
    bool identity = false;    // numbered by the engine, never by a statement
};

struct View {
    Tokens tokens;
    std::unique_ptr<Select> query;
};

struct Table {
    std::string name;
    std::vector<Column> columns;
    std::vector<std::string> key;
    std::shared_ptr<const View> view;  // null for a table
    // The position of a column; -1 without one of that name.
    int find(std::string_view column) const;
};

class Catalog {
  public:
    explicit Catalog(sqlite3* engine) : engine_(engine) {}
    // Reads everything, or one table or view, from the file anew.
    void load();
    void load_table(const std::string& name);

    const Table* find(std::string_view name) const;
    // Throws Error 42S02.
    const Table& get(std::string_view name) const;
    // The names of the tables' indexes in the file, in lower case.
    bool has_index(std::string_view name) const;

    const std::unordered_map<std::string, Table>& tables() const { return tables_; }

    // Columns of type real keep seven digits, as a server's do, instead of all.
    bool rounds_reals = false;

  private:
    void read(const std::string& condition);
    sqlite3* engine_;
    std::unordered_map<std::string, Table> tables_;         // by name in lower case
    std::unordered_map<std::string, std::string> indexes_;  // index and its table, in lower case
};

// What stands before the Transact-SQL text of a view, in a comment of its definition.
inline constexpr std::string_view view_mark = "/*tsql:";

// A name between double quotes.
std::string quoted_name(std::string_view name);

}  // namespace database::tsql
