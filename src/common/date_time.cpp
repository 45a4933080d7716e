#include "common/date_time.h"

#include <fmt/format.h>

#include <chrono>

#include "common/text.h"

namespace common {

namespace {

using std::chrono::day;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

year_month_day calendar(const Date& date) {
    return year(date.year) / month(static_cast<unsigned>(date.month)) / day(static_cast<unsigned>(date.day));
}

// Reads the text of a moment from left to right.
class Reader {
  public:
    explicit Reader(std::string_view text) : rest_(text) {}
    bool done() const { return rest_.empty(); }
    char peek() const { return rest_.empty() ? '\0' : rest_.front(); }
    bool take(char c) {
        if (peek() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }
    void skip_blanks() {
        while (take(' ')) {
        }
    }
    // The number of digits that come next.
    std::size_t digits() const {
        std::size_t n = 0;
        while (n < rest_.size() && rest_[n] >= '0' && rest_[n] <= '9')
            ++n;
        return n;
    }
    // Reads `count` digits as a number. There must be at least that many (see digits()).
    int number(std::size_t count) {
        int value = 0;
        for (const char c : rest_.substr(0, count))
            value = value * 10 + (c - '0');
        rest_.remove_prefix(count);
        return value;
    }
    std::string_view rest() const { return rest_; }
    void drop(std::size_t count) { rest_.remove_prefix(count); }

  private:
    std::string_view rest_;
};

std::optional<Date> read_date(Reader& in) {
    Date date;
    if (in.digits() == 8) {
        date = {in.number(4), in.number(2), in.number(2)};
        return is_valid(date) ? std::optional(date) : std::nullopt;
    }
    int parts[3] = {};
    bool year_first = false;
    bool year_last = false;
    char separator = '\0';
    for (int i = 0; i < 3; ++i) {
        const std::size_t digits = in.digits();
        if (digits == 4 && i == 0)
            year_first = true;
        else if (digits == 4 && i == 2 && !year_first)
            year_last = true;
        else if (digits < 1 || digits > 2)
            return {};
        parts[i] = in.number(digits);
        if (i == 2) break;
        if (i == 0) separator = in.peek();
        if (separator != '/' && separator != '-' && separator != '.') return {};
        if (!in.take(separator)) return {};
    }
    if (year_first)
        date = {parts[0], parts[1], parts[2]};
    else if (year_last)
        date = {parts[2], parts[0], parts[1]};
    else
        return {};
    return is_valid(date) ? std::optional(date) : std::nullopt;
}

// Reads "AM" (false) or "PM" (true) in any case, if it comes next.
std::optional<bool> read_half_of_day(Reader& in) {
    const std::string_view next = in.rest().substr(0, 2);
    const bool pm = equal_ignoring_case(next, "PM");
    if (!pm && !equal_ignoring_case(next, "AM")) return {};
    in.drop(2);
    return pm;
}

std::optional<TimeOfDay> read_time(Reader& in) {
    TimeOfDay time;
    const auto two = [&in](int& field, int limit) {
        const std::size_t digits = in.digits();
        if (digits < 1 || digits > 2) return false;
        field = in.number(digits);
        return field <= limit;
    };
    if (!two(time.hour, 23)) return {};
    if (!in.take(':') || !two(time.minute, 59)) return {};
    if (in.take(':')) {
        if (!two(time.second, 59)) return {};
        if (in.take('.')) {
            const std::size_t digits = in.digits();
            if (digits < 1 || digits > 9) return {};
            int scale = 100;
            for (std::size_t i = 0; i < digits; ++i, scale /= 10)
                time.millisecond += in.number(1) * scale;
        }
    }
    in.skip_blanks();
    if (const auto pm = read_half_of_day(in)) {
        if (time.hour < 1 || time.hour > 12) return {};
        time.hour = time.hour % 12 + (*pm ? 12 : 0);
    }
    return time;
}

}  // namespace

std::string date_text(const Date& date) {
    return fmt::format("{:04}/{:02}/{:02}", date.year, date.month, date.day);
}

std::string time_text(const TimeOfDay& time) {
    return fmt::format("{:02}:{:02}:{:02}", time.hour, time.minute, time.second);
}

std::string moment_text(const Moment& moment) {
    return date_text(moment.date) + " " + time_text(moment.time);
}

std::string twelve_hour_text(const TimeOfDay& time) {
    const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return fmt::format("{:02}:{:02} {}", hour, time.minute, time.hour < 12 ? "AM" : "PM");
}

bool is_valid(const Date& date) {
    return date.year >= 1753 && date.year <= 9999 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
           date.day <= 31 && calendar(date).ok();
}

std::optional<Moment> parse_moment(std::string_view text) {
    Reader in(trim(text));
    Moment moment;
    const std::size_t digits = in.digits();
    if (digits > 0 && digits <= 2 && in.rest().substr(digits).starts_with(':')) {
        const auto time = read_time(in);
        if (!time || !in.done()) return {};
        moment.time = *time;
        return moment;
    }
    const auto date = read_date(in);
    if (!date) return {};
    moment.date = *date;
    if (in.done()) return moment;
    if (!in.take('T') && in.peek() != ' ') return {};
    in.skip_blanks();
    const auto time = read_time(in);
    if (!time || !in.done()) return {};
    moment.time = *time;
    return moment;
}

double seconds_between(const Moment& from, const Moment& to) {
    const auto seconds = [](const Moment& m) {
        return static_cast<double>(days_from_epoch(m.date)) * 86400.0 + m.time.hour * 3600.0 +
               m.time.minute * 60.0 + m.time.second + m.time.millisecond / 1000.0;
    };
    return seconds(to) - seconds(from);
}

long days_from_epoch(const Date& date) {
    return sys_days(calendar(date)).time_since_epoch().count();
}

Date date_from_epoch(long days) {
    const year_month_day date{sys_days{std::chrono::days{days}}};
    return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day()))};
}

Date add_days(const Date& date, long days) {
    return date_from_epoch(days_from_epoch(date) + days);
}

Moment on_day_zero(const TimeOfDay& time) {
    return {{1900, 1, 1}, time};
}

Moment next_second(const Moment& moment) {
    Moment next{moment.date, {moment.time.hour, moment.time.minute, moment.time.second + 1, 0}};
    if (next.time.second == 60) next.time = {next.time.hour, next.time.minute + 1, 0, 0};
    if (next.time.minute == 60) next.time = {next.time.hour + 1, 0, 0, 0};
    if (next.time.hour == 24) next = {add_days(next.date, 1), {}};
    return next;
}

}  // namespace common
