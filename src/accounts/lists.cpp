#include "accounts/lists.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "accounts/messages.h"
#include "common/numbers.h"
#include "common/text.h"

namespace accounts {

std::vector<Choice> choices(const database::Result& rows, std::string_view code, std::string_view name) {
    std::vector<Choice> list;
    for (const auto& row : rows)
        list.push_back({row.integer(code), row.text(name)});
    return list;
}

bool contains(const std::vector<Choice>& list, std::int64_t code) {
    return std::any_of(list.begin(), list.end(), [&](const Choice& choice) { return choice.code == code; });
}

std::string name_of(const std::vector<Choice>& list, std::int64_t code) {
    for (const Choice& choice : list) {
        if (choice.code == code) return choice.name;
    }
    return "";
}

TextLimits::TextLimits(database::Connection& connection, std::string_view table)
    : table_(connection.description(table)) {}

bool TextLimits::fits(std::string_view column, std::string_view text) const {
    for (std::size_t i = 0; i < table_->columns.size() && i < table_->types.size(); ++i) {
        if (!common::equal_ignoring_case(table_->columns[i], column)) continue;
        const std::string& type = table_->types[i];
        const auto bracket = type.find('(');
        std::size_t width = 0;
        if (bracket == std::string::npos ||
            std::from_chars(type.data() + bracket + 1, type.data() + type.size(), width).ec != std::errc())
            return true;  // no width, or "max"
        return common::column_width(text) <= width;
    }
    return true;
}

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
