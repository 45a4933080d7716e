#include "database/value.h"

#include <cmath>
#include <limits>

#include "common/numbers.h"

namespace database {

namespace {

template <typename... Ts>
struct Cases : Ts... {
    using Ts::operator()...;
};

// The whole part of a number, limited to 64 bits.
std::int64_t whole(double number) {
    if (std::isnan(number)) return 0;
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (number >= limit) return std::numeric_limits<std::int64_t>::max();
    if (number <= -limit) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(number);
}

}  // namespace

double number_of(const Value& value) {
    return std::visit(
        Cases{[](Null) { return 0.0; }, [](std::int64_t v) { return static_cast<double>(v); },
              [](double v) { return v; }, [](const std::string& v) { return common::numeric_value(v); },
              [](const common::Moment&) { return 0.0; }},
        value);
}

std::int64_t integer_of(const Value& value) {
    if (const auto* v = std::get_if<std::int64_t>(&value)) return *v;
    if (const auto* v = std::get_if<std::string>(&value)) {
        if (const auto integer = common::parse_integer(*v)) return *integer;
    }
    return whole(number_of(value));
}

std::string text_of(const Value& value) {
    return std::visit(
        Cases{[](Null) { return std::string(); }, [](std::int64_t v) { return std::to_string(v); },
              [](double v) { return common::shortest_text(v); }, [](const std::string& v) { return v; },
              [](const common::Moment& v) { return common::moment_text(v); }},
        value);
}

common::Moment moment_of(const Value& value) {
    if (const auto* v = std::get_if<common::Moment>(&value)) return *v;
    if (const auto* v = std::get_if<std::string>(&value))
        return common::parse_moment(*v).value_or(common::Moment{});
    return {};
}

}  // namespace database
