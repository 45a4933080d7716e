#include "startup/shop_version.h"

#include <optional>
#include <vector>

#include "common/text.h"
#include "startup/messages.h"
#include "startup/reasons.h"

namespace startup {

namespace {

std::vector<std::int64_t> numbers_in(std::string_view version) {
    constexpr std::int64_t largest = 1'000'000'000;
    std::vector<std::int64_t> numbers;
    bool in_number = false;
    for (const char c : version) {
        const bool is_digit = c >= '0' && c <= '9';
        if (is_digit && !in_number) numbers.push_back(0);
        if (is_digit && numbers.back() < largest) numbers.back() = numbers.back() * 10 + (c - '0');
        in_number = is_digit;
    }
    return numbers;
}

bool is_date(const std::vector<std::int64_t>& numbers) {
    constexpr std::int64_t first_year = 1900;
    return numbers.size() == 3 && numbers[0] >= first_year && numbers[1] <= 12 && numbers[2] <= 31;
}

}  // namespace

Stamp read_stamp(database::Connection& connection) {
    const auto rows = connection.query("select * from basic");
    if (rows.empty())
        throw StartUpError("the table basic has no row", std::string(message::settings_missing));
    if (!rows.front().has("cr_v")) return {};
    return {std::string(common::trim(rows.front().text("cr_v"))), true};
}

void write_stamp(database::Connection& connection, std::string_view version) {
    connection.execute(database::Sql("Update basic set   cr_v = ") + database::quoted(version));
}

bool is_older(std::string_view version, std::string_view than) {
    auto own = numbers_in(version);
    auto other = numbers_in(than);
    if (own.empty() || other.empty() || is_date(own) != is_date(other)) return false;
    const std::size_t parts = std::max(own.size(), other.size());
    own.resize(parts);  // "1.1" is "1.1.0"
    other.resize(parts);
    return own < other;
}

}  // namespace startup
