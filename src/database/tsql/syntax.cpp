#include "database/tsql/syntax.h"

#include <algorithm>
#include <charconv>

#include "common/text.h"
#include "database/error.h"

namespace database::tsql {

namespace {

struct Known {
    std::string_view name;
    Type::Kind kind;
    int bytes;
};

constexpr Known known_types[] = {
    {"int", Type::Kind::integer, 4},        {"integer", Type::Kind::integer, 4},
    {"bigint", Type::Kind::integer, 8},     {"smallint", Type::Kind::integer, 2},
    {"tinyint", Type::Kind::integer, 1},    {"bit", Type::Kind::bit, 1},
    {"real", Type::Kind::real, 8},          {"float", Type::Kind::real, 8},
    {"numeric", Type::Kind::numeric, 8},    {"decimal", Type::Kind::numeric, 8},
    {"money", Type::Kind::numeric, 8},      {"smallmoney", Type::Kind::numeric, 8},
    {"datetime", Type::Kind::datetime, 8},  {"smalldatetime", Type::Kind::datetime, 8},
    {"datetime2", Type::Kind::datetime, 8}, {"date", Type::Kind::datetime, 8},
    {"varchar", Type::Kind::text, 0},       {"nvarchar", Type::Kind::text, 0},
    {"char", Type::Kind::text, 0},          {"nchar", Type::Kind::text, 0},
    {"text", Type::Kind::text, 0},          {"ntext", Type::Kind::text, 0},
    {"sysname", Type::Kind::text, 0},       {"image", Type::Kind::other, 0},
    {"varbinary", Type::Kind::other, 0},    {"binary", Type::Kind::other, 0},
};

}  // namespace

Type of_kind(Type::Kind kind) {
    Type type;
    type.kind = kind;
    return type;
}

Type named_type(std::string_view name, const std::vector<int>& arguments) {
    const std::string lower = common::lower_ascii(name);
    const auto found = std::find_if(std::begin(known_types), std::end(known_types),
                                    [&](const Known& k) { return k.name == lower; });
    if (found == std::end(known_types)) {
        throw Error("42000", "Cannot find data type " + std::string(name) + ".", "");
    }
    Type type;
    type.kind = found->kind;
    type.bytes = found->bytes;
    // The engine would use a key of type "integer" as its row number.
    type.written = lower == "integer" ? "int" : std::string(name);
    if (!arguments.empty()) {
        type.length = std::max(arguments[0], 0);  // max is kept as -1
        type.written += '(';
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            type.written += i == 0 ? "" : ", ";
            type.written += arguments[i] < 0 ? "max" : std::to_string(arguments[i]);
        }
        type.written += ')';
        if (arguments.size() > 1) type.scale = arguments[1];
    } else if (lower == "nchar" || lower == "char" || lower == "varchar" || lower == "nvarchar") {
        type.length = 1;  // a column without a width holds one character
    } else if (lower == "numeric" || lower == "decimal") {
        type.length = 18;
    } else if (lower == "money" || lower == "smallmoney") {
        type.length = 19;
        type.scale = 4;
    }
    return type;
}

Type parse_type(std::string_view written) {
    const auto open = written.find('(');
    std::vector<int> arguments;
    if (open != written.npos) {
        std::string_view rest = written.substr(open + 1);
        while (!rest.empty() && rest.front() != ')') {
            int number = -1;
            std::from_chars(rest.data(), rest.data() + rest.size(), number);
            arguments.push_back(number);
            const auto comma = rest.find(',');
            if (comma == rest.npos) break;
            rest = common::trim(rest.substr(comma + 1));
        }
    }
    return named_type(common::trim(written.substr(0, open)), arguments);
}

}  // namespace database::tsql
