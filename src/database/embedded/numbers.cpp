// Functions on numbers.
#include <algorithm>
#include <cmath>

#include "common/numbers.h"
#include "common/text.h"
#include "database/embedded/functions.h"

namespace database::embedded {

namespace {

constexpr double powers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// Half away from zero, counted on the number's shortest decimal form: 2.675 to 2.68.
double rounded(double number, int decimals) {
    if (decimals < 0) {
        const double unit = std::pow(10.0, -decimals);
        return std::round(number / unit) * unit;
    }
    if (decimals > 9 || !(std::fabs(number) < 1e15)) return number;
    const double power = powers[decimals];
    const double scaled = number * power;
    const double whole = std::round(scaled);
    // Far from the middle between two steps the quick way cannot be wrong.
    if (std::fabs(std::fabs(scaled - std::trunc(scaled)) - 0.5) > 1e-6 && std::fabs(scaled) < 1e9)
        return whole / power;
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

template <double (*body)(double)>
void stepped(const Call& call) {
    if (call.null(0)) return call.give();
    if (call.type(0) == SQLITE_INTEGER) return call.give(call.integer(0));
    call.give(body(call.number(0)));
}

void square_root(const Call& call) {
    if (call.null(0)) return call.give();
    if (call.number(0) < 0) return call.fail("42000", "An invalid floating point operation occurred.");
    call.give(std::sqrt(call.number(0)));
}

void power(const Call& call) {
    if (call.any_null()) return call.give();
    const double result = std::pow(call.number(0), call.number(1));
    if (!std::isfinite(result)) return call.fail("22003", "Arithmetic overflow error in power.");
    if (call.type(0) == SQLITE_INTEGER && std::fabs(result) < 9e18)
        return call.give(static_cast<std::int64_t>(result));
    call.give(result);
}

void sign(const Call& call) {
    if (call.null(0)) return call.give();
    const double number = call.number(0);
    call.give(static_cast<std::int64_t>((number > 0) - (number < 0)));
}

// What the server calls numeric: signs and marks alone ("." "-" "$"), grouping commas, a currency sign and
// exponents count; blanks alone do not.
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

constexpr Function numbers[] = {
    {"ts_round", 2, round_number},
    {"ts_round", 3, round_number},
    {"ts_div", 2, divide},
    {"ts_mod", 2, modulo},
    {"ts_ceiling", 1, stepped<std::ceil>},
    {"ts_floor", 1, stepped<std::floor>},
    {"ts_sqrt", 1, square_root},
    {"ts_power", 2, power},
    {"ts_sign", 1, sign},
    {"ts_isnumeric", 1, numeric},
};

}  // namespace

void register_numbers(sqlite3* engine) {
    register_all(engine, numbers, std::size(numbers));
}

}  // namespace database::embedded
