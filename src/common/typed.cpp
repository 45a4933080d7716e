#include "common/typed.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "common/messages.h"
#include "common/numbers.h"
#include "common/text.h"

namespace common {

TypedAmount read_amount(std::string_view text) {
    if (trim(text).empty()) return {};
    const auto value = parse_number(text);
    if (!value || *value < 0 || *value >= 1e9) return {{}, message::wrong_amount};
    const Amount amount(*value);
    if (std::fabs(amount.value() - *value) > 1e-7) return {{}, message::too_fine};
    return {amount, {}};
}

std::optional<std::int64_t> read_code(std::string_view text) {
    const auto code = parse_integer(text);
    if (!code || *code < 1 || *code > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
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

}  // namespace common
