#include "common/typed.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>

#include "common/messages.h"
#include "common/numbers.h"
#include "common/text.h"

namespace common {

namespace {

bool contains_any(std::string_view text, std::initializer_list<std::string_view> marks) {
    return std::any_of(marks.begin(), marks.end(),
                       [&](std::string_view mark) { return text.find(mark) != std::string_view::npos; });
}

// "+5" may mean five more; nothing is guessed.
bool has_plus(std::string_view text) {
    return trim(text).starts_with('+');
}

}  // namespace

NumberFault number_fault(std::string_view text) {
    // The Arabic comma, the Arabic thousands separator and the true minus sign count as well.
    if (contains_any(text, {",", "\u060C", "\u066C"})) return NumberFault::comma;
    if (contains_any(text, {"-", "\u2212"})) return NumberFault::minus;
    return parse_number(text) && !has_plus(text) ? NumberFault::none : NumberFault::no_number;
}

TypedNumber read_number(std::string_view text, std::string_view wrong) {
    switch (number_fault(text)) {
        case NumberFault::comma:
            return {0, message::no_comma};
        case NumberFault::minus:
            return {0, message::no_minus};
        case NumberFault::no_number:
            return {0, wrong};
        case NumberFault::none:
            break;
    }
    return {numeric_value(text), {}};
}

TypedAmount read_amount(std::string_view text) {
    if (trim(text).empty()) return {};
    const TypedNumber number = read_number(text, message::wrong_amount);
    if (!number.is_good()) return {{}, number.refusal};
    if (number.value >= 1e9) return {{}, message::wrong_amount};
    const Amount amount(number.value);
    if (std::fabs(amount.value() - number.value) > 1e-7) return {{}, message::too_fine};
    return {amount, {}};
}

std::optional<std::int64_t> read_code(std::string_view text) {
    const auto code = parse_integer(text);
    if (!code || has_plus(text) || *code < 1 || *code > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return *code;
}

std::optional<Date> read_date(std::string_view text) {
    std::string typed = western_digits(trim(text));
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    // A date with the year last is day first for people but month first for parse_moment, so it is reordered.
    const std::size_t end = std::min(typed.find_first_of(" T"), typed.size());
    const std::size_t first = std::min(typed.find_first_of("/-."), end);
    const std::size_t second = first == end ? end : std::min(typed.find_first_of("/-.", first + 1), end);
    if (second < end && first <= 2 && end - second == 5 &&
        std::all_of(typed.begin(), typed.begin() + static_cast<std::ptrdiff_t>(first), is_digit)) {
        typed = typed.substr(second + 1, 4) + typed[first] + typed.substr(first + 1, second - first - 1) +
                typed[second] + typed.substr(0, first) + typed.substr(end);
    }
    if (std::string_view(typed).substr(0, end).find(':') != std::string_view::npos) return std::nullopt;
    const auto moment = parse_moment(typed);
    return moment ? std::optional(moment->date) : std::nullopt;
}

std::optional<TimeOfDay> read_time(std::string_view text) {
    const std::string typed = western_digits(trim(text));
    if (typed.empty()) return std::nullopt;
    const auto moment = parse_moment("2000/01/01 " + typed);
    return moment ? std::optional(moment->time) : std::nullopt;
}

}  // namespace common
