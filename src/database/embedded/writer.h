// Writes a Transact-SQL tree in the embedded engine's language, with the types of all expressions known.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "database/embedded/catalog.h"
#include "database/tsql/syntax.h"

namespace database::tsql {

// An expression as written, and what is known of it.
struct Written {
    std::string sql;
    Type type;
    bool plain = false;      // a column, which brings its collation along
    bool condition = false;  // true or false, which is no value in Transact-SQL
    std::string day = {};    // of a moment made from a day's column and a time's: the day's column
};

// A whole statement as written.
struct Translation {
    std::string sql;
    std::vector<Column> columns;  // of the result; empty for a statement without one
};

class Writer {
  public:
    // A value is written as a mark ("?1") for its slot or, when `inline_values` is set, as a literal.
    // `pinned` receives the slots whose values shaped the text.
    Writer(const Catalog& catalog, const std::vector<Value>& values, std::set<std::size_t>& pinned,
           bool inline_values = false)
        : catalog_(catalog), values_(&values), pinned_(pinned), inline_values_(inline_values) {}

    Translation select(const Select& select);
    Translation insert(const Insert& insert);
    Translation update(const Update& update);
    Translation remove(const Delete& remove);
    // The condition of an index, and the default of a column of a type.
    std::string column_default(const Expression& value, const Type& type);
    std::string table_condition(const Table& table, const Expression& condition);

    // Writing, as functions of the table in tsql_functions.cpp need it.
    Written write(const Expression& expression);
    // The same where a value is expected, and not a condition.
    Written value(const Expression& expression);
    Written to_text(Written what);
    Written to_number(Written what);
    Written to_whole(Written what);
    Written to_moment(Written what);
    enum class Purpose { compute, convert, store };
    // To a type; `style` is convert()'s as written.
    Written convert(Written what, const Type& target, Purpose purpose, const std::string& style = "0");
    // Text that compares without regard to case wherever it stands.
    std::string collated(const Written& what) const;
    const std::string* text_value(const Expression& expression);
    [[noreturn]] void fail(const std::string& why) const;

  private:
    struct ScopeSource {
        std::string alias;
        const Table* table = nullptr;  // null for a query
        std::vector<Column> columns;   // of a query
        const std::vector<Column>& all() const { return table != nullptr ? table->columns : columns; }
    };
    struct Scope {
        std::vector<ScopeSource> sources;
        Scope* outer = nullptr;
    };
    class Entered;

    std::string condition(const Expression& expression);
    Written literal(std::size_t slot);
    Written column(const Expression& expression);
    Written unary(const Expression& expression);
    Written binary(const Expression& expression);
    Written arithmetic(const std::string& op, Written left, Written right);
    Written moment_arithmetic(const std::string& op, Written left, Written right);
    Written comparison(const std::string& op, Written left, Written right);
    std::string moment_comparison(const std::string& op, const Written& left, const Written& right) const;
    Written branch(const Expression& expression);
    Written in(const Expression& expression);
    Written like(const Expression& expression);
    Written conversion(const Expression& expression);
    // cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)
    bool day_and_time(const Expression& expression, Written& written);
    const Expression* styled_moment(const Expression& expression, std::int64_t style);
    bool is_small_constant(const Expression& expression);

    // Queries. `targets`: the types that the columns are stored in.
    std::string query(const Select& select, std::vector<Column>& columns, const std::vector<Type>* targets);
    std::string simple_query(const Select& select, std::vector<Column>& columns,
                             const std::vector<Type>* targets, const std::vector<Order>* order_by);
    std::string source_list(const std::vector<Source>& sources, Scope& scope);
    std::string source(const Source& source, Scope& scope);
    std::string items(const Select& select, std::vector<Column>& columns, const std::vector<Type>* targets);
    std::string grouping(const Select& select, const std::vector<Column>& columns, std::string& where);
    void check_grouped(const Expression& expression, const std::set<std::string>& groups);
    std::string ordering(const std::vector<Order>& order_by, const Select& select,
                         const std::vector<Column>& columns);
    std::string limit(const Expression& top);

    // Changes.
    struct Target {
        const Table* table = nullptr;
        std::string alias;
    };
    Target target(const std::string& name, const std::vector<Source>& from);
    const Table& changeable(const std::string& name);
    Written stored(const Expression& expression, const Type& type);
    std::string where_of(const Target& target, const std::vector<Source>& from, const Expression* where,
                         const Expression* top, const std::string& more);

    const Catalog& catalog_;
    const std::vector<Value>* values_;
    std::set<std::size_t>& pinned_;
    bool inline_values_;
    Scope* scope_ = nullptr;
    int depth_ = 0;
};

// A function of Transact-SQL: how many arguments it takes, and how it is written.
using FunctionWriter = Written (*)(Writer&, const Expression&);
struct FunctionRule {
    std::string_view name;
    std::size_t least, most;
    FunctionWriter write;
};
// Null for a name that the engine does not know.
const FunctionRule* find_function(std::string_view name);
bool is_aggregate(const Expression& expression);

// The table behind a view that is nothing but another name of it; null for any other view.
const Table* renamed_table(const Catalog& catalog, const Table& view);

}  // namespace database::tsql
