// The types of columns and expressions, which decide what an operator means.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace database::tsql {

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

}  // namespace database::tsql
