// Cuts a Transact-SQL statement into its pieces and takes its literals out as values.
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

// A statement without its values: the key to find one that is prepared already.
struct Shape {
    // The statement with each value replaced by a mark of its kind. Statements of the same shape differ only
    // in their values.
    std::string text;
    // The same as those of tokenize().
    std::vector<Value> values;
};
// Reads and throws as tokenize() does. The memory of `shape` is used again.
void read_shape(std::string_view statement, const std::vector<Value>& parameters, Shape& shape);

// The mark of a value in a shape: whole numbers that fit an int have one of their own.
char kind_mark(const Value& value);
bool fits_int(const Value& value);

}  // namespace database::tsql
