// Writes a Transact-SQL tree in the embedded engine's language, with the types of all expressions known.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "database/embedded/catalog.h"
#include "database/tsql/syntax.h"

namespace database::embedded {

using tsql::Delete;
using tsql::Expression;
using tsql::ExpressionPtr;
using tsql::Insert;
using tsql::Item;
using tsql::Order;
using tsql::Source;
using tsql::Update;

// An expression in the engine's language, and what is known about it.
struct TypedSql {
    std::string sql;
    Type type;
    bool plain = false;      // a column, which has its collation already
    bool condition = false;  // true or false, which is not a value in Transact-SQL
    std::string day = {};    // of a moment made from a day's column and a time's: the day's column
};
inline TypedSql typed(std::string sql, Type::Kind kind) {
    return {std::move(sql), of_kind(kind), false, false};
}

// A whole statement in the engine's language.
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

    // What the functions in write_functions.cpp need.
    TypedSql write(const Expression& expression);
    // The same, but fails for a condition.
    TypedSql value(const Expression& expression);
    TypedSql to_text(TypedSql what);
    TypedSql to_number(TypedSql what);
    TypedSql to_whole(TypedSql what);
    TypedSql to_moment(TypedSql what);
    enum class Purpose { compute, convert, store };
    // Converts to a type; `style` is that of convert(), translated.
    TypedSql convert(TypedSql what, const Type& target, Purpose purpose, const std::string& style = "0");
    // A text with the collation in which it must be compared.
    std::string collated(const TypedSql& what) const;
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
    class ScopeGuard;

    std::string condition(const Expression& expression);
    TypedSql literal(std::size_t slot);
    TypedSql column(const Expression& expression);
    TypedSql unary(const Expression& expression);
    TypedSql binary(const Expression& expression);
    TypedSql arithmetic(const std::string& op, TypedSql left, TypedSql right);
    TypedSql moment_arithmetic(const std::string& op, TypedSql left, TypedSql right);
    TypedSql comparison(const std::string& op, TypedSql left, TypedSql right);
    std::string moment_comparison(const std::string& op, const TypedSql& left, const TypedSql& right) const;
    TypedSql branch(const Expression& expression);
    TypedSql in(const Expression& expression);
    TypedSql like(const Expression& expression);
    std::string conjunction(const std::vector<const Expression*>& parts);
    std::string name_searches(const Expression& column, const std::vector<const Expression*>& likes);
    const ScopeSource* source_with_name_index(const Expression& column) const;
    TypedSql conversion(const Expression& expression);
    // cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)
    bool day_and_time(const Expression& expression, TypedSql& written);
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
    std::set<std::string> decided_by_key(const Select& select);
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
    TypedSql stored(const Expression& expression, const Type& type);
    std::string where_of(const Target& target, const std::vector<Source>& from, const Expression* where,
                         const Expression* top, const std::string& more);

    const Catalog& catalog_;
    const std::vector<Value>* values_;
    std::set<std::size_t>& pinned_;
    bool inline_values_;
    Scope* scope_ = nullptr;
    int depth_ = 0;
    int negations_ = 0;  // "not" around what is written; an index search has no "unknown"
};

// A function of Transact-SQL: how many arguments it takes, and how it is written.
using FunctionWriter = TypedSql (*)(Writer&, const Expression&);
struct FunctionRule {
    std::string_view name;
    std::size_t least, most;
    FunctionWriter write;
};
// Returns null for an unknown function.
const FunctionRule* find_function(std::string_view name);
bool is_aggregate(const Expression& expression);

// Returns the table if the view is nothing but another name of it, else null.
const Table* renamed_table(const Catalog& catalog, const Table& view);

}  // namespace database::embedded
