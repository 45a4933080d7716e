#include "accounts/lists.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "accounts/messages.h"
#include "common/numbers.h"
#include "common/text.h"

namespace accounts {

Amount read_amount(std::string_view text) {
    if (common::trim(text).empty()) return {};
    const auto value = common::parse_number(text);
    if (!value || *value < 0 || *value >= 1e9) return {0, message::no_amount};
    const double rounded = common::round_decimals(*value, 2);
    if (std::fabs(rounded - *value) > 1e-7) return {0, message::too_fine};
    return {rounded, {}};
}

std::optional<std::int64_t> read_code(std::string_view text) {
    const auto code = common::parse_integer(common::trim(text));
    if (!code || *code < 1 || *code > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
    return *code;
}

}  // namespace accounts
