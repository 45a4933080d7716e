// A Transact-SQL statement cut into tokens, its literals taken out as values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/value.h"

namespace database::tsql {

struct Token {
    enum class Kind { end, name, quoted_name, value, symbol };
    Kind kind = Kind::end;
    std::string text;       // as written, without quotes
    std::string lower;      // names only, ASCII letters in lower case
    std::size_t slot = 0;   // of a value: its place in Tokens::values
    std::size_t begin = 0;  // where it stands in the statement
};

struct Tokens {
    std::vector<Token> list;  // always ends with a token of kind end
    std::vector<Value> values;
};

// Every "?" takes the next of `parameters`. Throws Error 42000 on an unclosed quote, a stray character or too
// few or too many parameters.
Tokens tokenize(std::string_view statement, const std::vector<Value>& parameters);

}  // namespace database::tsql
