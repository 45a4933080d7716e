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

// Every spelling of a part and the one that the code below uses.
constexpr std::pair<std::string_view, std::string_view> part_names[] = {
    {"year", "year"},       {"yyyy", "year"},
    {"yy", "year"},         {"quarter", "quarter"},
    {"qq", "quarter"},      {"q", "quarter"},
    {"month", "month"},     {"mm", "month"},
    {"m", "month"},         {"dayofyear", "dayofyear"},
    {"dy", "dayofyear"},    {"y", "dayofyear"},
    {"day", "day"},         {"dd", "day"},
    {"d", "day"},           {"week", "week"},
    {"wk", "week"},         {"ww", "week"},
    {"weekday", "weekday"}, {"dw", "weekday"},
    {"w", "weekday"},       {"hour", "hour"},
    {"hh", "hour"},         {"minute", "minute"},
    {"mi", "minute"},       {"n", "minute"},
    {"second", "second"},   {"ss", "second"},
    {"s", "second"},        {"millisecond", "millisecond"},
    {"ms", "millisecond"},
};

std::string_view part_name(std::string_view part) {
    for (const auto& [spelling, name] : part_names) {
        if (common::equal_ignoring_case(spelling, part)) return name;
    }
    return {};
}

std::int64_t unit_length(std::string_view name) {
    if (name == "week") return 7 * day_length;
    if (name == "day" || name == "weekday" || name == "dayofyear") return day_length;
    if (name == "hour") return 3'600'000;
    if (name == "minute") return 60'000;
    if (name == "second") return 1'000;
    if (name == "millisecond") return 1;
    return 0;
}

int months_of(std::string_view name) {
    return name == "year" ? 12 : name == "quarter" ? 3 : name == "month" ? 1 : 0;
}

// The days from 0001/01/01, a Monday, so that weekday 1 is the Sunday.
std::int64_t weekday(std::int64_t ticks) {
    return (ticks / day_length + 1) % 7 + 1;
}

bool in_range(std::int64_t ticks) {
    static const std::int64_t first = ticks_of({{1753, 1, 1}, {}});
    static const std::int64_t last = ticks_of({{9999, 12, 31}, {23, 59, 59, 999}});
    return ticks >= first && ticks <= last;
}

// "2026/11/21" or "2026/11/21 10:42:00", the program's own forms, without the general reader.
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
    const int short_style = style % 100;
    if (short_style >= 3 && short_style <= 5) {
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
    const int short_year = year % 100;
    switch (style) {
        case 0:
        case 100: {
            const int hour = t.hour % 12 == 0 ? 12 : t.hour % 12;
            return format("%s %2d %04d %2d:%02d%s", month_names[month - 1].data(), day, year, hour, t.minute,
                          t.hour < 12 ? "AM" : "PM");
        }
        case 1:
            return format("%02d/%02d/%02d", month, day, short_year);
        case 101:
            return format("%02d/%02d/%04d", month, day, year);
        case 2:
            return format("%02d.%02d.%02d", short_year, month, day);
        case 102:
            return format("%04d.%02d.%02d", year, month, day);
        case 3:
            return format("%02d/%02d/%02d", day, month, short_year);
        case 103:
            return format("%02d/%02d/%04d", day, month, year);
        case 4:
            return format("%02d.%02d.%02d", day, month, short_year);
        case 104:
            return format("%02d.%02d.%04d", day, month, year);
        case 5:
            return format("%02d-%02d-%02d", day, month, short_year);
        case 105:
            return format("%02d-%02d-%04d", day, month, year);
        case 8:
        case 108:
            return format("%02d:%02d:%02d", t.hour, t.minute, t.second);
        case 10:
            return format("%02d-%02d-%02d", month, day, short_year);
        case 110:
            return format("%02d-%02d-%04d", month, day, year);
        case 11:
            return format("%02d/%02d/%02d", short_year, month, day);
        case 111:
            return format("%04d/%02d/%02d", year, month, day);
        case 12:
            return format("%02d%02d%02d", short_year, month, day);
        case 112:
            return format("%04d%02d%02d", year, month, day);
        case 14:
        case 114:
            return format("%02d:%02d:%02d:%03d", t.hour, t.minute, t.second, t.millisecond);
        case 20:
        case 120:
            return format("%04d-%02d-%02d %02d:%02d:%02d", year, month, day, t.hour, t.minute, t.second);
        case 21:
        case 25:
        case 121:
            return format("%04d-%02d-%02d %02d:%02d:%02d.%03d", year, month, day, t.hour, t.minute, t.second,
                          t.millisecond);
        case 126:
            return format("%04d-%02d-%02dT%02d:%02d:%02d", year, month, day, t.hour, t.minute, t.second) +
                   (t.millisecond == 0 ? std::string() : format(".%03d", t.millisecond));
        default:
            return {};
    }
}

std::optional<std::int64_t> part_of(std::int64_t ticks, std::string_view part) {
    const std::string_view name = part_name(part);
    const common::Moment m = moment_of_ticks(ticks);
    if (name == "year") return m.date.year;
    if (name == "quarter") return (m.date.month - 1) / 3 + 1;
    if (name == "month") return m.date.month;
    if (name == "day") return m.date.day;
    if (name == "hour") return m.time.hour;
    if (name == "minute") return m.time.minute;
    if (name == "second") return m.time.second;
    if (name == "millisecond") return m.time.millisecond;
    if (name == "weekday") return weekday(ticks);
    const std::int64_t new_year = ticks_of({{m.date.year, 1, 1}, {}});
    if (name == "dayofyear") return (ticks - new_year) / day_length + 1;
    if (name == "week") return ((ticks - new_year) / day_length + weekday(new_year) - 1) / 7 + 1;
    return {};
}

std::optional<std::int64_t> add_part(std::int64_t ticks, std::string_view part, std::int64_t number) {
    const std::string_view name = part_name(part);
    if (number > 1'000'000'000'000 || number < -1'000'000'000'000) return {};
    std::int64_t sum = 0;
    if (const std::int64_t unit = unit_length(name); unit != 0) {
        if (number != 0 && std::abs(number) > 400'000'000'000'000 / unit) return {};
        sum = ticks + number * unit;
    } else if (const int months = months_of(name); months != 0) {
        common::Moment m = moment_of_ticks(ticks);
        if (std::abs(number) > 200'000) return {};
        const std::int64_t month = m.date.year * std::int64_t{12} + m.date.month - 1 + number * months;
        if (month < 1753 * 12 || month > 9999 * 12 + 11) return {};
        m.date.year = static_cast<int>(month / 12);
        m.date.month = static_cast<int>(month % 12) + 1;
        while (!common::is_valid(m.date))
            --m.date.day;  // the last day of a shorter month
        sum = ticks_of(m);
    } else {
        return {};
    }
    return in_range(sum) ? std::optional(sum) : std::nullopt;
}

std::optional<std::int64_t> parts_between(std::int64_t from, std::int64_t to, std::string_view part) {
    const std::string_view name = part_name(part);
    // What counts are the boundaries crossed, not the time gone by.
    if (name == "week") return (to / day_length + 1) / 7 - (from / day_length + 1) / 7;
    if (const std::int64_t unit = unit_length(name); unit != 0) return to / unit - from / unit;
    const common::Date a = moment_of_ticks(from).date, b = moment_of_ticks(to).date;
    if (name == "year") return b.year - a.year;
    if (name == "month") return (b.year - a.year) * 12 + b.month - a.month;
    if (name == "quarter") return (b.year - a.year) * 4 + (b.month - 1) / 3 - (a.month - 1) / 3;
    return {};
}

}  // namespace database::embedded
