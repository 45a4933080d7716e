#include "database/sql.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

#include "common/search.h"
#include "common/text.h"

namespace database {

Quoted quoted(std::string_view text) {
    std::string literal;
    literal.reserve(text.size() + 2);
    literal += '\'';
    for (const char c : text) {
        if (c == '\'') literal += '\'';
        literal += c;
    }
    literal += '\'';
    return Quoted(std::move(literal));
}

std::string like_text(std::string_view typed) {
    std::string pattern;
    for (const char32_t c : common::code_points(typed)) {
        if (common::is_mark(c)) continue;
        const auto alike = common::alike(c);
        if (!alike.empty() || c == U'%' || c == U'_' || c == U'[')
            pattern += "[" + common::utf8(alike.empty() ? std::u32string_view(&c, 1) : alike) + "]";
        else
            pattern += common::utf8(common::lower_case(c));
    }
    return pattern;
}

Quoted quoted(const common::Date& date) {
    return quoted(common::date_text(date));
}
Quoted quoted(const common::TimeOfDay& time) {
    return quoted(common::time_text(time));
}
Quoted quoted(const common::Moment& moment) {
    return quoted(common::moment_text(moment));
}

Sql& Sql::operator+=(Fragment fragment) {
    text_ += fragment.text();
    return *this;
}

Sql& Sql::operator+=(const Quoted& value) {
    text_ += value.text();
    return *this;
}

Sql& Sql::operator+=(const Sql& other) {
    text_ += other.text_;
    return *this;
}

namespace {

// "a-" followed by "-1" would begin a comment and silently cut the statement.
void keep_minus_apart(std::string& text, bool negative) {
    if (negative && text.ends_with('-')) text += ' ';
}

}  // namespace

Sql& Sql::operator+=(double number) {
    if (!std::isfinite(number))
        throw std::invalid_argument("a number that is not finite cannot enter a statement");
    if (number == 0) number = 0;  // no "-0"
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    keep_minus_apart(text_, number < 0);
    text_.append(digits, end);
    return *this;
}

Sql& Sql::append(std::int64_t number) {
    keep_minus_apart(text_, number < 0);
    char digits[24];
    text_.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
    return *this;
}

Sql Sql::from_administrator(std::string statement) {
    Sql sql;
    sql.text_ = std::move(statement);
    return sql;
}

}  // namespace database
