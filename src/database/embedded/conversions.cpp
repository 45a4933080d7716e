// Conversions between the types of the server.
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "common/clock.h"
#include "common/numbers.h"
#include "common/text.h"
#include "database/embedded/functions.h"
#include "database/embedded/moments.h"

namespace database::embedded {

std::optional<double> parse_server_number(std::string_view text) {
    text = common::trim(text);
    if (text.empty()) return 0.0;
    if (text.front() == '+') {
        text.remove_prefix(1);
        if (text.empty() || text.front() == '-' || text.front() == '+') return {};
    }
    const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
    // from_chars would take "inf" and "nan".
    if (digits.empty() || (digits.front() != '.' && (digits.front() < '0' || digits.front() > '9')))
        return {};
    double number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc{} || end.ptr != text.data() + text.size()) return {};
    return number;
}

namespace {

constexpr double whole_limit = 9223372036854775808.0;  // 2^63

void fail_conversion(const Call& call, std::string_view type) {
    call.fail("22018", "Conversion failed when converting the value '" + std::string(call.text(0)) +
                           "' to data type " + std::string(type) + ".");
}

void fail_range(const Call& call, std::string_view type) {
    call.fail("22003", "Arithmetic overflow error converting the value " + std::string(call.text(0)) +
                           " to data type " + std::string(type) + ".");
}

std::optional<std::int64_t> whole_text(std::string_view text) {
    text = common::trim(text);
    if (text.empty()) return 0;
    if (text.front() == '+') text.remove_prefix(1);
    std::int64_t number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc{} || end.ptr != text.data() + text.size()) return {};
    return number;
}

// ts_int(x, bytes): toward zero; out of the type's range is an error.
void to_integer(const Call& call) {
    if (call.null(0)) return call.give();
    const std::int64_t bytes = call.integer(1);
    static constexpr std::string_view names[] = {"", "tinyint", "smallint", "", "int"};
    const std::string_view name = bytes < 5 ? names[bytes] : "bigint";
    std::int64_t number = 0;
    switch (call.type(0)) {
        case SQLITE_INTEGER:
            number = call.integer(0);
            break;
        case SQLITE_FLOAT: {
            const double value = call.number(0);
            if (!(std::fabs(value) < whole_limit)) return fail_range(call, name);
            number = static_cast<std::int64_t>(value);
            break;
        }
        default: {
            const auto parsed = whole_text(call.text(0));
            if (!parsed) return fail_conversion(call, name);
            number = *parsed;
        }
    }
    const bool fits = bytes == 1   ? number >= 0 && number <= 255
                      : bytes == 2 ? number >= -32768 && number <= 32767
                      : bytes == 4 ? number >= -2147483648LL && number <= 2147483647LL
                                   : true;
    if (!fits) return fail_range(call, name);
    call.give(number);
}

// ts_bit(x): 1 for everything but 0.
void to_bit(const Call& call) {
    if (call.null(0)) return call.give();
    if (call.type(0) == SQLITE_TEXT) {
        const std::string_view text = common::trim(call.text(0));
        if (common::equal_ignoring_case(text, "true")) return call.give(std::int64_t{1});
        if (common::equal_ignoring_case(text, "false")) return call.give(std::int64_t{0});
        const auto number = whole_text(text);
        if (!number) return fail_conversion(call, "bit");
        return call.give(std::int64_t{*number != 0});
    }
    call.give(std::int64_t{call.number(0) != 0});
}

// ts_real(x)
void to_real(const Call& call) {
    if (call.null(0)) return call.give();
    if (call.type(0) != SQLITE_TEXT) return call.give(call.number(0));
    const auto number = parse_server_number(call.text(0));
    if (!number) return fail_conversion(call, "float");
    call.give(*number);
}

// ts_single(x): the number of about seven digits that a real column returns.
void to_single(const Call& call) {
    if (call.null(0)) return call.give();
    const double number = call.number(0);
    const auto single = static_cast<float>(number);
    if (!std::isfinite(single) && std::isfinite(number)) return fail_range(call, "real");
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), single).ptr;
    double meant = number;
    std::from_chars(digits.data(), end, meant);
    call.give(meant);
}

// ts_numeric(x, precision, scale): rounded half away from zero.
void to_numeric(const Call& call) {
    if (call.null(0)) return call.give();
    double number = call.number(0);
    if (call.type(0) == SQLITE_TEXT) {
        const auto parsed = parse_server_number(call.text(0));
        const bool has_exponent = call.text(0).find_first_of("eE") != std::string_view::npos;
        if (!parsed || has_exponent || common::trim(call.text(0)).empty())
            return fail_conversion(call, "numeric");
        number = *parsed;
    }
    const int scale = static_cast<int>(std::min<std::int64_t>(call.integer(2), 9));
    const double limit = std::pow(10.0, static_cast<double>(call.integer(1) - call.integer(2)));
    if (!(std::fabs(number) < limit)) return fail_range(call, "numeric");
    if (scale == 0 && call.type(0) == SQLITE_INTEGER) return call.give(call.integer(0));
    number = common::round_decimals(number, scale);
    if (scale == 0 && std::fabs(number) < whole_limit) return call.give(static_cast<std::int64_t>(number));
    call.give(number);
}

// ts_moment(x[, style]): a number counts days from 1900/01/01.
void to_moment(const Call& call) {
    if (call.null(0)) return call.give();
    if (call.type(0) != SQLITE_TEXT) {
        const double days = call.number(0);
        if (!(days >= -53690 && days < 2958464)) return fail_range(call, "datetime");
        return call.give(day_zero + static_cast<std::int64_t>(std::llround(days * day_length)));
    }
    const auto ticks = parse_ticks(call.text(0), call.null(1) ? 0 : static_cast<int>(call.integer(1)));
    if (!ticks) {
        return call.fail("22007", "Conversion failed when converting the text '" + std::string(call.text(0)) +
                                      "' to a date and time.");
    }
    call.give(*ticks);
}

// ts_moment_number(ticks): the days from 1900/01/01.
void moment_to_number(const Call& call) {
    if (call.null(0)) return call.give();
    call.give(static_cast<double>(call.integer(0) - day_zero) / static_cast<double>(day_length));
}

// ts_moment_text(ticks, style)
void moment_to_text(const Call& call) {
    if (call.any_null()) return call.give();
    const auto text = moment_as_text(call.integer(0), static_cast<int>(call.integer(1)));
    if (!text) {
        return call.fail("42000", std::to_string(call.integer(1)) +
                                      " is not a valid style number when converting " +
                                      "from datetime to a character string.");
    }
    call.give(*text);
}

// ts_number_text(x, is_float): six digits of a float, as on the server; all digits of other numbers.
void number_to_text(const Call& call) {
    if (call.null(0)) return call.give();
    if (call.type(0) == SQLITE_INTEGER) return call.give(std::to_string(call.integer(0)));
    if (call.integer(1) == 0) return call.give(common::shortest_text(call.number(0)));
    char digits[40];
    std::snprintf(digits, sizeof digits, "%.6g", call.number(0));
    std::string text = digits;
    const auto e = text.find('e');
    if (e != std::string::npos && text.size() - e == 4) text.insert(e + 2, "0");  // three digits of exponent
    call.give(text);
}

// ts_fit(text, characters): a text too long for its column is an error; trailing blanks are dropped.
void fit(const Call& call) {
    if (call.null(0)) return call.give();
    const std::string_view text = call.text(0);
    const auto room = static_cast<std::size_t>(call.integer(1));
    if (text.size() <= room || common::column_width(text) <= room) return call.give(text);
    if (common::column_width(common::trim_right(text)) <= room)
        return call.give(common::cut_to_column(text, room));
    call.fail("22001", "String or binary data would be truncated.");
}

// ts_cut(text, characters): convert() cuts silently; a number that does not fit becomes "*".
void cut(const Call& call) {
    if (call.null(0)) return call.give();
    const auto room = static_cast<std::size_t>(call.integer(1));
    const std::string_view text = call.text(0);
    if (common::column_width(text) <= room) return call.give(text);
    if (call.type(0) == SQLITE_INTEGER) return call.give(std::string_view("*"));
    call.give(common::cut_to_column(text, room));
}

void now(const Call& call) {
    call.give(ticks_of(common::SystemClock().now()));
}

void part(const Call& call) {
    if (call.null(1)) return call.give();
    const auto found = part_of(call.integer(1), call.text(0));
    found ? call.give(*found)
          : call.fail("42000", "'" + std::string(call.text(0)) + "' is not a recognized datepart.");
}

void add(const Call& call) {
    if (call.any_null()) return call.give();
    const auto sum = add_part(call.integer(2), call.text(0), call.integer(1));
    sum ? call.give(*sum) : call.fail("22008", "Adding a value to a 'datetime' column caused an overflow.");
}

void difference(const Call& call) {
    if (call.any_null()) return call.give();
    const auto count = parts_between(call.integer(1), call.integer(2), call.text(0));
    count ? call.give(*count)
          : call.fail("42000", "'" + std::string(call.text(0)) + "' is not a recognized datediff option.");
}

constexpr Function conversions[] = {
    {"ts_int", 2, to_integer},
    {"ts_bit", 1, to_bit},
    {"ts_real", 1, to_real},
    {"ts_single", 1, to_single},
    {"ts_numeric", 3, to_numeric},
    {"ts_moment", 1, to_moment},
    {"ts_moment", 2, to_moment},
    {"ts_moment_number", 1, moment_to_number},
    {"ts_moment_text", 2, moment_to_text},
    {"ts_number_text", 2, number_to_text},
    {"ts_fit", 2, fit},
    {"ts_cut", 2, cut},
    {"ts_getdate", 0, now, false},
    {"ts_datepart", 2, part},
    {"ts_dateadd", 3, add},
    {"ts_datediff", 3, difference},
};

}  // namespace

void register_conversions(sqlite3* engine) {
    register_all(engine, conversions, std::size(conversions));
}

}  // namespace database::embedded
