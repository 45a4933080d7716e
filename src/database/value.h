// One cell of the database: null, whole number, number, text or moment.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "common/date_time.h"

namespace database {

struct Null {
    auto operator<=>(const Null&) const = default;
};

using Value = std::variant<Null, std::int64_t, double, std::string, common::Moment>;

inline bool is_null(const Value& value) {
    return std::holds_alternative<Null>(value);
}

// Readings of a cell that never fail: a null is 0, "" or no moment; a text that holds a number is that
// number; a number as text is its shortest decimal form; a moment as text is "yyyy/mm/dd HH:mm:ss".
double number_of(const Value& value);
std::int64_t integer_of(const Value& value);
std::string text_of(const Value& value);
// A moment column's cell; 1900/01/01 00:00:00 when null or no moment.
common::Moment moment_of(const Value& value);

}  // namespace database
