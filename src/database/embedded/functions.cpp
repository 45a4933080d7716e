// The server's functions on texts and numbers. Positions and lengths in texts count characters, from 1.
#include "database/embedded/functions.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "common/numbers.h"
#include "common/search.h"
#include "common/text.h"
#include "database/embedded/collation.h"
#include "database/embedded/name_index.h"
#include "database/error.h"

namespace database::embedded {

bool Call::any_null() const {
    for (int i = 0; i < count; ++i) {
        if (null(i)) return true;
    }
    return false;
}

std::string_view Call::text(int i) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(values[i]));
    return {bytes == nullptr ? "" : bytes, static_cast<std::size_t>(sqlite3_value_bytes(values[i]))};
}

void Call::give(std::string_view value) const {
    sqlite3_result_text64(context, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void Call::fail(std::string_view sqlstate, std::string_view why) const {
    const std::string text = std::string(sqlstate) + "|" + std::string(why);
    sqlite3_result_error(context, text.data(), static_cast<int>(text.size()));
}

namespace {

void call(sqlite3_context* context, int count, sqlite3_value** values) {
    const auto* function = static_cast<const Function*>(sqlite3_user_data(context));
    const Call made{context, count, values};
    try {
        function->body(made);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    } catch (const std::exception& e) {
        made.fail("HY000", e.what());
    }
}

int collate(void*, int a_size, const void* a, int b_size, const void* b) {
    return compare_texts({static_cast<const char*>(a), static_cast<std::size_t>(a_size)},
                         {static_cast<const char*>(b), static_cast<std::size_t>(b_size)});
}

}  // namespace

void register_all(sqlite3* engine, const Function* functions, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const Function& f = functions[i];
        const int flags = SQLITE_UTF8 | (f.deterministic ? SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS : 0);
        const int code = sqlite3_create_function_v2(
            engine, f.name, f.arguments, flags, const_cast<Function*>(&f), call, nullptr, nullptr, nullptr);
        if (code != SQLITE_OK) throw Error("HY000", sqlite3_errmsg(engine), f.name);
    }
}

namespace {

// The longest text that a function returns, in characters.
constexpr std::int64_t longest = 1'000'000;

void length(const Call& call) {
    if (call.null(0)) return call.give();
    call.give(static_cast<std::int64_t>(common::length(common::trim_right(call.text(0)))));
}

void upper(const Call& call) {
    if (call.null(0)) return call.give();
    std::u32string text = common::code_points(call.text(0));
    for (char32_t& c : text) {
        // Finds the upper-case letter by trying which letter has this one as its lower case.
        for (const char32_t distance : {0x20U, 0x50U, 1U}) {
            if (c >= distance && common::lower_case(c) == c && c - distance != c &&
                common::lower_case(c - distance) == c) {
                c -= distance;
                break;
            }
        }
    }
    call.give(common::utf8(text));
}

void lower(const Call& call) {
    if (call.null(0)) return call.give();
    std::u32string text = common::code_points(call.text(0));
    std::transform(text.begin(), text.end(), text.begin(), common::lower_case);
    call.give(common::utf8(text));
}

// An argument as a count of characters.
std::size_t count_of(const Call& call, int i) {
    return static_cast<std::size_t>(std::clamp<std::int64_t>(call.integer(i), 0, longest));
}

void left(const Call& call) {
    if (call.any_null()) return call.give();
    if (call.integer(1) < 0)
        return call.fail("42000", "Invalid length parameter passed to the left function.");
    call.give(common::left(call.text(0), count_of(call, 1)));
}

void right(const Call& call) {
    if (call.any_null()) return call.give();
    if (call.integer(1) < 0)
        return call.fail("42000", "Invalid length parameter passed to the right function.");
    call.give(common::right(call.text(0), count_of(call, 1)));
}

// substring(text, start, length): positions before character 1 count towards the length.
void substring(const Call& call) {
    if (call.any_null()) return call.give();
    const std::int64_t start = std::clamp(call.integer(1), -longest, longest);
    const std::int64_t wanted = std::min(call.integer(2), longest);
    if (wanted < 0) return call.fail("42000", "Invalid length parameter passed to the substring function.");
    const std::u32string text = common::code_points(call.text(0));
    const auto size = static_cast<std::int64_t>(text.size());
    const std::int64_t first = std::clamp<std::int64_t>(start - 1, 0, size);
    const std::int64_t last = std::clamp<std::int64_t>(start - 1 + wanted, first, size);
    call.give(common::utf8(std::u32string_view(text).substr(static_cast<std::size_t>(first),
                                                            static_cast<std::size_t>(last - first))));
}

// charindex(what, text[, start])
void charindex(const Call& call) {
    if (call.any_null()) return call.give();
    const std::u32string what = lower_text(call.text(0)), text = lower_text(call.text(1));
    const std::int64_t start = call.count > 2 ? std::clamp<std::int64_t>(call.integer(2), 1, longest) : 1;
    const auto at =
        what.empty() ? std::u32string::npos : text.find(what, static_cast<std::size_t>(start - 1));
    call.give(at == std::u32string::npos ? std::int64_t{0} : static_cast<std::int64_t>(at) + 1);
}

// replace(text, what, with), without regard to case
void replace(const Call& call) {
    if (call.any_null()) return call.give();
    const std::u32string text = common::code_points(call.text(0)), what = lower_text(call.text(1));
    const std::u32string with = common::code_points(call.text(2));
    std::u32string in_lower_case = text;
    std::transform(text.begin(), text.end(), in_lower_case.begin(), common::lower_case);
    if (what.empty()) return call.give(call.text(0));
    std::u32string result;
    for (std::size_t at = 0; at < text.size();) {
        if (in_lower_case.compare(at, what.size(), what) == 0) {
            result += with;
            at += what.size();
        } else {
            result += text[at++];
        }
        if (result.size() > static_cast<std::size_t>(longest))
            return call.fail("22001", "The text grows too long.");
    }
    call.give(common::utf8(result));
}

// stuff(text, start, length, with)
void stuff(const Call& call) {
    if (call.null(0) || call.null(1) || call.null(2)) return call.give();
    const std::u32string text = common::code_points(call.text(0));
    const std::int64_t start = call.integer(1), count = std::min(call.integer(2), longest);
    if (start < 1 || count < 0 || start > static_cast<std::int64_t>(text.size())) return call.give();
    const auto at = static_cast<std::size_t>(start - 1);
    const std::size_t end = std::min(text.size(), at + static_cast<std::size_t>(count));
    call.give(common::utf8(text.substr(0, at)) + std::string(call.null(3) ? "" : call.text(3)) +
              common::utf8(text.substr(end)));
}

struct Pattern {
    explicit Pattern(std::string_view text) : lower(lower_text(text)) {}
    std::u32string lower;
};

void like(const Call& call) {
    if (call.any_null()) return call.give();
    call.give(std::int64_t{is_like(lower_text(call.text(0)), kept_argument<Pattern>(call, 1).lower)});
}

constexpr Function text_functions[] = {
    {"ts_len", 1, length},          {"ts_upper", 1, upper},         {"ts_lower", 1, lower},
    {"ts_left", 2, left},           {"ts_right", 2, right},         {"ts_substring", 3, substring},
    {"ts_charindex", 2, charindex}, {"ts_charindex", 3, charindex}, {"ts_replace", 3, replace},
    {"ts_stuff", 4, stuff},         {"ts_like", 2, like},
};

constexpr double powers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// Rounds the shortest decimal form half away from zero: 2.675 to 2.68.
double rounded(double number, int decimals) {
    if (decimals < 0) {
        const double unit = std::pow(10.0, -decimals);
        return std::round(number / unit) * unit;
    }
    if (decimals > 9 || !(std::fabs(number) < 1e15)) return number;
    const double power = powers[decimals];
    const double scaled = number * power;
    // Binary rounding can only be wrong near the middle between two steps. Below 1e13 the error of the
    // product is less than 0.003.
    constexpr double doubt = 0.01;
    if (std::fabs(scaled) < 1e13 && std::fabs(std::fabs(scaled - std::trunc(scaled)) - 0.5) > doubt)
        return std::round(scaled) / power;
    return common::round_decimals(number, decimals);
}

// round(x, decimals[, truncate])
void round_number(const Call& call) {
    if (call.any_null()) return call.give();
    const int decimals = static_cast<int>(std::clamp<std::int64_t>(call.integer(1), -18, 18));
    const bool truncate = call.count > 2 && call.integer(2) != 0;
    if (call.type(0) == SQLITE_INTEGER) {
        if (decimals >= 0) return call.give(call.integer(0));
        const double unit = std::pow(10.0, -decimals);
        const double parts = call.number(0) / unit;
        return call.give(
            static_cast<std::int64_t>((truncate ? std::trunc(parts) : std::round(parts)) * unit));
    }
    const double number = call.number(0);
    if (!truncate) return call.give(rounded(number, decimals));
    const double power = std::pow(10.0, decimals);
    call.give(std::trunc(number * power) / power);
}

void divide(const Call& call) {
    if (call.any_null()) return call.give();
    if (call.number(1) == 0) return call.fail("22012", "Divide by zero error encountered.");
    if (call.type(0) == SQLITE_INTEGER && call.type(1) == SQLITE_INTEGER) {
        if (call.integer(1) == -1) return call.give(-call.number(0));
        return call.give(call.integer(0) / call.integer(1));
    }
    call.give(call.number(0) / call.number(1));
}

void modulo(const Call& call) {
    if (call.any_null()) return call.give();
    if (call.number(1) == 0) return call.fail("22012", "Divide by zero error encountered.");
    if (call.type(0) == SQLITE_INTEGER && call.type(1) == SQLITE_INTEGER) {
        if (call.integer(1) == -1) return call.give(std::int64_t{0});
        return call.give(call.integer(0) % call.integer(1));
    }
    call.give(std::fmod(call.number(0), call.number(1)));
}

// isnumeric() of the server accepts signs and points alone ("." "-" "$"), grouping commas, a currency sign
// and exponents, but not blanks alone.
bool is_numeric(std::string_view text) {
    text = common::trim(text);
    if (text.empty()) return false;
    std::size_t at = 0;
    bool sign = false, currency = false, digits = false, mark = false;
    while (at < text.size() && (text[at] == '+' || text[at] == '-' || text[at] == '$')) {
        bool& seen = text[at] == '$' ? currency : sign;
        if (seen) return false;
        seen = true;
        ++at;
    }
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (c >= '0' && c <= '9') {
            digits = true;
        } else if (c == '.' && !mark) {
            mark = true;
        } else if (c == ',' && !mark) {
            // grouping
        } else if ((c == 'e' || c == 'E' || c == 'd' || c == 'D') && digits && !currency) {
            ++at;
            if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
            const std::string_view exponent = text.substr(at);
            return exponent.size() <= 3 &&
                   std::all_of(exponent.begin(), exponent.end(), [](char d) { return d >= '0' && d <= '9'; });
        } else {
            return false;
        }
    }
    return true;
}

void numeric(const Call& call) {
    if (call.null(0)) return call.give(std::int64_t{0});
    if (call.type(0) != SQLITE_TEXT) return call.give(std::int64_t{1});
    call.give(std::int64_t{is_numeric(call.text(0))});
}

constexpr Function numeric_functions[] = {
    {"ts_round", 2, round_number}, {"ts_round", 3, round_number}, {"ts_div", 2, divide},
    {"ts_mod", 2, modulo},         {"ts_isnumeric", 1, numeric},
};

}  // namespace

void register_functions(sqlite3* engine) {
    if (sqlite3_create_collation_v2(engine, collation_name, SQLITE_UTF8, nullptr, collate, nullptr) !=
        SQLITE_OK) {
        throw Error("HY000", sqlite3_errmsg(engine), "");
    }
    register_conversions(engine);
    register_name_search(engine);
    register_all(engine, text_functions, std::size(text_functions));
    register_all(engine, numeric_functions, std::size(numeric_functions));
}

}  // namespace database::embedded
