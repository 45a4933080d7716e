// Dates, times of day and moments, and their text forms.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace common {

struct Date {
    int year = 1900;
    int month = 1;
    int day = 1;
    auto operator<=>(const Date&) const = default;
};

struct TimeOfDay {
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
    auto operator<=>(const TimeOfDay&) const = default;
};

// A calendar date with a time of day, in the shop's local time; the database stores no time zones.
struct Moment {
    Date date;
    TimeOfDay time;
    auto operator<=>(const Moment&) const = default;
};

// The expiry date that stands for "no expiry".
inline constexpr Date no_expiry{3000, 1, 1};

// "yyyy/mm/dd", as dates are shown and sent to the database ("set dateformat ymd").
std::string date_text(const Date& date);
// "HH:mm:ss".
std::string time_text(const TimeOfDay& time);
// "yyyy/mm/dd HH:mm:ss".
std::string moment_text(const Moment& moment);
// "hh:mm AM/PM", twelve hours with two digits: 00:05 is "12:05 AM".
std::string twelve_hour_text(const TimeOfDay& time);

// Returns true for a real day of the years 1753 to 9999 (the range of the server's datetime).
bool is_valid(const Date& date);

// Reads a moment in any form that the database accepts under "set dateformat ymd": year-month-day with "/",
// "-" or
// "." between, eight digits in a row, month/day/year with a four-digit year last, each with an optional time
// "HH:mm[:ss[.fff]]" (also "T" as separator and "AM"/"PM"), or a time alone (on 1900/01/01).
// Surrounding blanks are ignored. Any other form and impossible days or times are refused. For what people
// type see typed.h.
std::optional<Moment> parse_moment(std::string_view text);

// The number of days since 1970/01/01, negative before it, and back.
long days_from_epoch(const Date& date);
Date date_from_epoch(long days);
Date add_days(const Date& date, long days);
// Negative if `to` is the earlier one.
double seconds_between(const Moment& from, const Moment& to);
// A time of day as a datetime column of its own holds it: on the server's day zero.
Moment on_day_zero(const TimeOfDay& time);
// The next whole second.
Moment next_second(const Moment& moment);

}  // namespace common
