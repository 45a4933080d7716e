#include "common/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "common/text.h"

namespace common {

namespace {

// The longest double in fixed notation has 309 digits before the point, or 1091 after it.
using Digits = std::array<char, 1200>;

std::string_view fixed_text(double value, Digits& buffer) {
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed).ptr;
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

// Adds one to a number given as digits.
void increment(std::string& digits) {
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return;
        }
        digits[i] = '0';
    }
    digits.insert(digits.begin(), '1');
}

// The Western form of the Arabic digit or decimal mark at `at`, and its length in bytes; 0 bytes if there is
// neither.
struct Mark {
    char western = 0;
    std::size_t bytes = 0;
};
Mark arabic_mark(std::string_view text, std::size_t at) {
    if (at + 1 >= text.size()) return {};
    const auto first = static_cast<unsigned char>(text[at]);
    const auto second = static_cast<unsigned char>(text[at + 1]);
    if (first == 0xD9 && second >= 0xA0 && second <= 0xA9) return {static_cast<char>('0' + second - 0xA0), 2};
    if (first == 0xDB && second >= 0xB0 && second <= 0xB9) return {static_cast<char>('0' + second - 0xB0), 2};
    if (first == 0xD9 && second == 0xAB) return {'.', 2};
    return {};
}

}  // namespace

bool all_digits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string format_decimals(double value, int decimals) {
    if (!std::isfinite(value)) value = 0;
    const auto places = static_cast<std::size_t>(std::clamp(decimals, 0, 9));
    Digits buffer;
    const std::string_view exact = fixed_text(std::fabs(value), buffer);
    const auto point = exact.find('.');
    std::string digits(exact.substr(0, point));
    const std::string_view fraction =
        point == std::string_view::npos ? std::string_view() : exact.substr(point + 1);
    digits += fraction.substr(0, places);
    if (fraction.size() < places) digits.append(places - fraction.size(), '0');
    if (fraction.size() > places && fraction[places] >= '5') increment(digits);

    const bool is_zero = digits.find_first_not_of('0') == std::string::npos;
    if (places > 0) digits.insert(digits.size() - places, 1, '.');
    return value < 0 && !is_zero ? "-" + digits : digits;
}

std::string format_amount(double amount) {
    return format_decimals(amount, 2);
}
std::string format_quantity(double quantity) {
    return format_decimals(quantity, 3);
}

double round_decimals(double value, int decimals) {
    const std::string text = format_decimals(value, decimals);
    double rounded = 0;
    std::from_chars(text.data(), text.data() + text.size(), rounded);
    return rounded;
}

std::string shortest_text(double value) {
    if (!std::isfinite(value) || value == 0) return "0";
    Digits buffer;
    return std::string(fixed_text(value, buffer));
}

std::optional<double> parse_number(std::string_view text) {
    const std::string western = western_digits(trim(text));
    std::string_view rest = western;
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+')) rest.remove_prefix(1);
    const auto point = rest.find('.');
    const std::string_view whole = rest.substr(0, point);
    const std::string_view fraction =
        point == std::string_view::npos ? std::string_view() : rest.substr(point + 1);
    if ((whole.empty() && fraction.empty()) || !all_digits(whole) || !all_digits(fraction)) return {};

    double value = 0;
    const auto result =
        std::from_chars(rest.data(), rest.data() + rest.size(), value, std::chars_format::fixed);
    if (result.ec == std::errc::result_out_of_range) {
        // A number too small for a double is 0; one too large is refused.
        if (whole.find_first_not_of('0') != std::string_view::npos) return {};
        value = 0;
    } else if (result.ec != std::errc()) {
        return {};
    }
    return negative && value != 0 ? -value : value;
}

std::optional<long long> parse_integer(std::string_view text) {
    const std::string western = western_digits(trim(text));
    std::string_view rest = western;
    if (rest.starts_with('+')) rest.remove_prefix(1);
    const std::string_view digits =
        rest.starts_with('-') && rest.size() == western.size() ? rest.substr(1) : rest;
    if (digits.empty() || !all_digits(digits)) return {};
    long long value = 0;
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (result.ec != std::errc()) return {};
    return value;
}

double numeric_value(std::string_view text) {
    return parse_number(text).value_or(0);
}

std::string western_digits(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Mark mark = arabic_mark(text, at);
        out += mark.bytes > 0 ? mark.western : text[at];
        at += mark.bytes > 0 ? mark.bytes : 1;
    }
    return out;
}

}  // namespace common
