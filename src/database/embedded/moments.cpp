#include "database/embedded/moments.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "common/text.h"

namespace database::embedded {

namespace {

constexpr std::int64_t epoch_day = 719'162;  // 1970/01/01 counted from 0001/01/01

constexpr std::string_view month_names[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// A part of a moment: its spellings, and its length in ticks, or in months where those differ.
struct Part {
    std::array<std::string_view, 3> spellings;
    std::int64_t length;
    int months;
};
constexpr Part parts[] = {
    {{"year", "yyyy", "yy"}, 0, 12},      {{"month", "mm", "m"}, 0, 1},
    {{"day", "dd", "d"}, day_length, 0},  {{"weekday", "dw", "dw"}, day_length, 0},
    {{"hour", "hh", "hh"}, 3'600'000, 0}, {{"minute", "mi", "n"}, 60'000, 0},
    {{"second", "ss", "s"}, 1'000, 0},
};

const Part* find_part(std::string_view spelling) {
    const auto* found = std::find_if(std::begin(parts), std::end(parts), [&](const Part& part) {
        return std::any_of(part.spellings.begin(), part.spellings.end(), [&](std::string_view known) {
            return common::equal_ignoring_case(known, spelling);
        });
    });
    return found == std::end(parts) ? nullptr : found;
}

bool in_range(std::int64_t ticks) {
    static const std::int64_t first = ticks_of({{1753, 1, 1}, {}});
    static const std::int64_t last = ticks_of({{9999, 12, 31}, {23, 59, 59, 999}});
    return ticks >= first && ticks <= last;
}

// "2026/11/21" or "2026/11/21 10:42:00": a fast path for the program's own forms.
std::optional<std::int64_t> parse_plain(std::string_view text) {
    if (text.size() != 10 && text.size() != 19) return {};
    const auto number = [&](std::size_t at, std::size_t width) {
        int value = 0;
        for (std::size_t i = at; i < at + width; ++i) {
            if (text[i] < '0' || text[i] > '9') return -1;
            value = value * 10 + (text[i] - '0');
        }
        return value;
    };
    if ((text[4] != '/' && text[4] != '-') || text[7] != text[4]) return {};
    common::Moment moment{{number(0, 4), number(5, 2), number(8, 2)}, {}};
    if (text.size() == 19) {
        if (text[10] != ' ' || text[13] != ':' || text[16] != ':') return {};
        moment.time = {number(11, 2), number(14, 2), number(17, 2), 0};
        const auto& t = moment.time;
        if (t.hour < 0 || t.hour > 23 || t.minute < 0 || t.minute > 59 || t.second < 0 || t.second > 59)
            return {};
    }
    if (!common::is_valid(moment.date)) return {};
    return ticks_of(moment);
}

// "21/11/2026 10:42" as "2026/11/21 10:42".
std::string day_first_to_year_first(std::string_view text) {
    const auto first = text.find_first_of("/.-");
    const auto second = first == text.npos ? first : text.find_first_of("/.-", first + 1);
    if (second == text.npos) return std::string(text);
    const auto end = std::min(text.find(' ', second), text.size());
    return std::string(text.substr(second + 1, end - second - 1)) + "/" +
           std::string(text.substr(first + 1, second - first - 1)) + "/" +
           std::string(text.substr(0, first)) + std::string(text.substr(end));
}

template <typename... Numbers>
std::string format(const char* form, Numbers... numbers) {
    std::array<char, 64> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), form, numbers...);
    return {buffer.data(), static_cast<std::size_t>(length)};
}

}  // namespace

std::int64_t ticks_of(const common::Moment& moment) {
    const auto& t = moment.time;
    return (common::days_from_epoch(moment.date) + epoch_day) * day_length +
           ((t.hour * 60 + t.minute) * 60 + t.second) * std::int64_t{1000} + t.millisecond;
}

common::Moment moment_of_ticks(std::int64_t ticks) {
    ticks = std::max<std::int64_t>(ticks, 0);
    const int of_day = static_cast<int>(ticks % day_length);
    return {common::date_from_epoch(static_cast<long>(ticks / day_length - epoch_day)),
            {of_day / 3'600'000, of_day / 60'000 % 60, of_day / 1000 % 60, of_day % 1000}};
}

std::optional<std::int64_t> parse_ticks(std::string_view text, int style) {
    text = common::trim(text);
    if (text.empty()) return day_zero;
    if (style == 103) {
        const auto moment = common::parse_moment(day_first_to_year_first(text));
        return moment ? std::optional(ticks_of(*moment)) : std::nullopt;
    }
    if (const auto plain = parse_plain(text)) return plain;
    const auto moment = common::parse_moment(text);
    return moment ? std::optional(ticks_of(*moment)) : std::nullopt;
}

std::optional<std::string> moment_as_text(std::int64_t ticks, int style) {
    const common::Moment m = moment_of_ticks(ticks);
    const auto& [year, month, day] = m.date;
    const auto& t = m.time;
    switch (style) {
        case 0:
        case 100: {
            const int hour = t.hour % 12 == 0 ? 12 : t.hour % 12;
            return format("%s %2d %04d %2d:%02d%s", month_names[month - 1].data(), day, year, hour, t.minute,
                          t.hour < 12 ? "AM" : "PM");
        }
        case 101:
            return format("%02d/%02d/%04d", month, day, year);
        case 103:
            return format("%02d/%02d/%04d", day, month, year);
        case 8:
        case 108:
            return format("%02d:%02d:%02d", t.hour, t.minute, t.second);
        case 111:
            return format("%04d/%02d/%02d", year, month, day);
        case 112:
            return format("%04d%02d%02d", year, month, day);
        case 120:
            return format("%04d-%02d-%02d %02d:%02d:%02d", year, month, day, t.hour, t.minute, t.second);
        case 121:
            return format("%04d-%02d-%02d %02d:%02d:%02d.%03d", year, month, day, t.hour, t.minute, t.second,
                          t.millisecond);
        default:
            return {};
    }
}

std::optional<std::int64_t> part_of(std::int64_t ticks, std::string_view spelling) {
    const Part* part = find_part(spelling);
    if (part == nullptr) return {};
    const std::string_view name = part->spellings[0];
    const common::Moment m = moment_of_ticks(ticks);
    if (name == "year") return m.date.year;
    if (name == "month") return m.date.month;
    if (name == "day") return m.date.day;
    if (name == "hour") return m.time.hour;
    if (name == "minute") return m.time.minute;
    if (name == "second") return m.time.second;
    return (ticks / day_length + 1) % 7 + 1;  // 0001/01/01 was a Monday; weekday 1 is the Sunday
}

std::optional<std::int64_t> add_part(std::int64_t ticks, std::string_view spelling, std::int64_t number) {
    const Part* part = find_part(spelling);
    // Keeps the products below within 64 bits; dates are out of range long before.
    constexpr std::int64_t most = 1'000'000'000'000;
    if (part == nullptr || number > most || number < -most) return {};
    if (part->months == 0) {
        if (std::abs(number) > 400'000'000'000'000 / part->length) return {};
        const std::int64_t sum = ticks + number * part->length;
        return in_range(sum) ? std::optional(sum) : std::nullopt;
    }
    common::Moment m = moment_of_ticks(ticks);
    const std::int64_t month = m.date.year * std::int64_t{12} + m.date.month - 1 + number * part->months;
    if (month < 1753 * 12 || month > 9999 * 12 + 11) return {};
    m.date.year = static_cast<int>(month / 12);
    m.date.month = static_cast<int>(month % 12) + 1;
    while (!common::is_valid(m.date))
        --m.date.day;  // the last day of a shorter month
    return ticks_of(m);
}

std::optional<std::int64_t> parts_between(std::int64_t from, std::int64_t to, std::string_view spelling) {
    const Part* part = find_part(spelling);
    if (part == nullptr) return {};
    // The boundaries crossed are counted, not the time elapsed.
    if (part->months == 0) return to / part->length - from / part->length;
    const common::Date a = moment_of_ticks(from).date, b = moment_of_ticks(to).date;
    const std::int64_t years = b.year - a.year;
    return part->months == 12 ? years : years * 12 + b.month - a.month;
}

}  // namespace database::embedded
