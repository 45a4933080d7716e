// The syntax tree of a Transact-SQL statement.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace database::tsql {

// The type of a column or an expression, which decides what an operator means.
struct Type {
    // From low to high precedence: of two unlike operands the lower is converted to the higher.
    enum class Kind { null, text, bit, integer, numeric, real, datetime, other };
    Kind kind = Kind::null;
    std::string written;  // "nvarchar(50)"; empty for an expression's type
    int length =
        0;          // of texts: the most characters; 0 when unlimited or unknown. Of numerics: the precision.
    int scale = 0;  // of numerics
    int bytes = 8;  // of integers: 1, 2, 4 or 8

    bool is_text() const { return kind == Kind::text; }
    bool is_datetime() const { return kind == Kind::datetime; }
    bool is_null() const { return kind == Kind::null; }
    bool is_whole() const { return kind == Kind::integer || kind == Kind::bit; }
    bool is_number() const { return is_whole() || kind == Kind::numeric || kind == Kind::real; }
};

Type of_kind(Type::Kind kind);

// The type that is written "name" or "name(arguments)". Throws Error 42000 for an unknown type.
Type named_type(std::string_view name, const std::vector<int>& arguments);
// The same from its text as kept in the database, "nvarchar(50)".
Type parse_type(std::string_view written);

struct Select;

struct Expression {
    enum class Kind {
        value,  // slot
        null,
        column,    // table (may be empty), name
        all,       // "*" or "table.*"
        unary,     // name is the operator: "-" "not"
        binary,    // name is the operator: arithmetic, comparison, "and", "or"
        function,  // name in lower case, parts are the arguments
        convert,   // type; parts: what, and the style if one is given
        branch,    // case: parts are [operand], (when, then)..., [else]; flags below
        in_list,   // parts[0] in the others
        in_select,
        between,  // parts: what, low, high
        like,     // parts: what, pattern
        is_null,
        exists,
        select,  // one value from a query
    };
    Kind kind = Kind::null;
    std::size_t slot = 0;
    std::string table;
    std::string name;
    std::vector<std::unique_ptr<Expression>> parts;
    std::unique_ptr<Select> query;
    Type type;
    bool negated = false;   // not in, not like, is not null ...
    bool distinct = false;  // count(distinct x)
    bool has_operand = false, has_else = false;
};
using ExpressionPtr = std::unique_ptr<Expression>;

struct Item {
    ExpressionPtr value;
    std::string alias;
};

struct Source {
    std::string table;
    std::string alias;  // what its columns are called by
    std::unique_ptr<Select> query;
    std::string join;  // "" for the first, "," or "INNER JOIN" ...
    ExpressionPtr on;
};

struct Order {
    ExpressionPtr value;
    bool descending = false;
};

struct Select {
    bool distinct = false;
    ExpressionPtr top;
    std::vector<Item> items;
    std::string into;
    std::vector<Source> from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> group_by;
    ExpressionPtr having;
    std::vector<Order> order_by;
    std::string compound;  // "UNION", "UNION ALL" ... before `next`
    std::unique_ptr<Select> next;
};

struct Insert {
    std::string table;
    std::vector<std::string> columns;
    std::vector<std::vector<ExpressionPtr>> rows;
    std::unique_ptr<Select> query;  // with neither rows nor query: default values
};

struct Update {
    ExpressionPtr top;
    std::string table;
    std::vector<std::pair<std::string, ExpressionPtr>> sets;
    std::vector<Source> from;
    ExpressionPtr where;
};

struct Delete {
    ExpressionPtr top;
    std::string table;
    std::vector<Source> from;
    ExpressionPtr where;
};

struct ColumnDefinition {
    std::string name;
    Type type;
    bool not_null = false;
    bool primary_key = false;
    ExpressionPtr default_value;
};

struct CreateTable {
    std::string table;
    std::vector<ColumnDefinition> columns;
    std::vector<std::string> primary_key;
};

struct CreateIndex {
    std::string index, table;
    bool unique = false;
    std::vector<std::pair<std::string, bool>> columns;  // descending?
    ExpressionPtr where;
};

struct CreateView {
    std::string view;
    std::unique_ptr<Select> query;
    std::string text;  // of the query, as written
};

struct Drop {
    enum class What { table, view, index, trigger };
    What what = What::table;
    std::string name;
    std::string table;  // of an index
};

struct AddColumns {
    std::string table;
    std::vector<ColumnDefinition> columns;
};

struct AlterColumn {
    std::string table;
    ColumnDefinition column;
};

struct DropColumn {
    std::string table;
    std::vector<std::string> columns;
};

struct Transaction {
    enum class What { begin, commit, rollback };
    What what = What::begin;
};

struct Nothing {};  // a setting that has no effect on the embedded engine

using Statement = std::variant<std::unique_ptr<Select>, Insert, Update, Delete, CreateTable, CreateIndex,
                               CreateView, Drop, AddColumns, AlterColumn, DropColumn, Transaction, Nothing>;

}  // namespace database::tsql
