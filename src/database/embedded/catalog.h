// The tables and views of an embedded shop, kept in memory so that statements can be translated without
// reading the file.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/tsql/scanner.h"
#include "database/tsql/syntax.h"

namespace database::embedded {

using tsql::Select;
using tsql::Tokens;
using tsql::Type;

struct Column {
    std::string name;
    Type type;
    bool not_null = false;
    std::string default_sql;  // in the engine's language; empty without one
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
    // Returns the position of a column, or -1 if there is none of that name.
    int find(std::string_view column) const;
};

class Catalog {
  public:
    explicit Catalog(sqlite3* engine) : engine_(engine) {}
    // Reads everything, or one table or view, from the file again.
    void load();
    void load_table(const std::string& name);

    const Table* find(std::string_view name) const;
    // Throws Error 42S02.
    const Table& get(std::string_view name) const;
    // `name` is the name in the file, in lower case.
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

// Marks the comment in a view's definition that holds its Transact-SQL text.
inline constexpr std::string_view view_mark = "/*tsql:";

// A name and a text as the engine's statements hold them: "name", 'text'.
std::string quoted_name(std::string_view name);
std::string quoted_text(std::string_view text);

}  // namespace database::embedded
