// The embedded engine stores moments as whole milliseconds since 0001/01/01 ("ticks"), so that they compare,
// sort and subtract as numbers.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/date_time.h"

namespace database::embedded {

inline constexpr std::int64_t day_length = 86'400'000;
// 1900/01/01, the server's day 0.
inline constexpr std::int64_t day_zero = 693'595 * day_length;

std::int64_t ticks_of(const common::Moment& moment);
common::Moment moment_of_ticks(std::int64_t ticks);

// Reads a text as the server does for a datetime: any form that common::parse_moment takes; blanks are day 0.
// `style` is convert()'s; 103 has the day before the month.
std::optional<std::int64_t> parse_ticks(std::string_view text, int style = 0);

// convert(varchar, moment, style). Returns nothing for an unknown style.
std::optional<std::string> moment_as_text(std::int64_t ticks, int style);

// The number of a part ("yy", "month", "hh" ...) of a moment. Returns nothing for an unknown part.
std::optional<std::int64_t> part_of(std::int64_t ticks, std::string_view part);
// dateadd and datediff. Return nothing for a result outside the server's range of dates or an unknown part.
std::optional<std::int64_t> add_part(std::int64_t ticks, std::string_view part, std::int64_t number);
std::optional<std::int64_t> parts_between(std::int64_t from, std::int64_t to, std::string_view part);

}  // namespace database::embedded
