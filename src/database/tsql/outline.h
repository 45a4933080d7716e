// A statement's literals taken out without cutting it into tokens: what finds one that is prepared already.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/value.h"

namespace database::tsql {

struct Outline {
    // The statement with a mark of its kind in the place of each value: two statements of one shape have the
    // same tokens but for their values.
    std::string shape;
    // Those that tokenize() takes out, in its order.
    std::vector<Value> values;
};

// Every "?" takes the next of `parameters`. The room that `made` has is used again. False for a statement
// that tokenize() refuses; not for every one that it does.
bool outline(std::string_view statement, const std::vector<Value>& parameters, Outline& made);

// The mark of a value in a shape: whole numbers that fit an int have one of their own.
char kind_mark(const Value& value);
bool fits_int(const Value& value);

// The number that `text` begins with, which begins with a digit or with a point and a digit; its length is
// left in `length`. Null when it is out of the range.
Value leading_number(std::string_view text, std::size_t& length);

}  // namespace database::tsql
