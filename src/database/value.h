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

// These never fail: a null is 0 or ""; a text that holds a number is that number; a number becomes text in
// its shortest decimal form, a moment as "yyyy/mm/dd HH:mm:ss".
double number_of(const Value& value);
std::int64_t integer_of(const Value& value);
std::string text_of(const Value& value);
// A moment column's cell; 1900/01/01 00:00:00 for a null or a cell that is not a moment.
common::Moment moment_of(const Value& value);

}  // namespace database
