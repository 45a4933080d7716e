// Statements joined from fragments and values, in types that keep what a user types out of the statement.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "common/amount.h"
#include "common/date_time.h"

namespace database {

// A piece of statement text that stands in the source: only a compile-time literal can become one.
class Fragment {
  public:
    template <std::size_t N>
    consteval Fragment(const char (&text)[N]) : text_(text, N - 1) {}  // literals convert on purpose
    constexpr std::string_view text() const { return text_; }
    // A part of the literal.
    constexpr Fragment piece(std::size_t from, std::size_t length = std::string_view::npos) const {
        return Fragment(text_.substr(from, length));
    }

  private:
    explicit constexpr Fragment(std::string_view part) : text_(part) {}
    std::string_view text_;
};

// A text or date value as a literal of the statement: in single quotes, single quotes doubled.
class Quoted {
  public:
    const std::string& text() const { return text_; }

  private:
    explicit Quoted(std::string text) : text_(std::move(text)) {}
    friend Quoted quoted(std::string_view text);
    std::string text_;
};
Quoted quoted(std::string_view text);
// Exact matches for std::string, or the standard library's stream manipulator of this name would be found.
inline Quoted quoted(const std::string& text) {
    return quoted(std::string_view(text));
}
inline Quoted quoted(std::string& text) {
    return quoted(std::string_view(text));
}
inline Quoted quoted(const char* text) {
    return quoted(std::string_view(text));
}
// A typed text as a pattern of `like`: "%", "_" and "[" stand for themselves, each letter for all that are
// alike (common/search.h). Marks are left out. For searches of names see database/name_search.h.
std::string like_text(std::string_view typed);
Quoted quoted(const common::Date& date);       // 'yyyy/mm/dd'
Quoted quoted(const common::TimeOfDay& time);  // 'HH:mm:ss'
Quoted quoted(const common::Moment& moment);   // 'yyyy/mm/dd HH:mm:ss'

// A statement: Sql("select * from stk where icode = ") + code + " and stcode = " + store.
class Sql {
  public:
    Sql(Fragment fragment) {                         // a fragment alone is a statement
        text_.reserve(fragment.text().size() + 80);  // most are joined with a value or two
        text_ = fragment.text();
    }

    Sql& operator+=(Fragment fragment);
    Sql& operator+=(const Quoted& value);
    Sql& operator+=(const Sql& other);
    // Whole numbers in decimal, doubles in the shortest form that reads back the same. A double that is not
    // finite throws std::invalid_argument: such a value must never reach a statement.
    Sql& operator+=(double number);
    Sql& operator+=(common::Amount amount) { return *this += amount.value(); }
    template <std::integral T>
    requires(!std::same_as<T, bool> && !std::same_as<T, char>) Sql& operator+=(T number) {
        return append(static_cast<std::int64_t>(number));
    }

    const std::string& text() const { return text_; }

    // A statement from outside the source: a script of the installation, or what an administrator typed at
    // the command line as a whole statement. Never for what a screen takes in.
    static Sql from_administrator(std::string statement);

  private:
    Sql() = default;
    Sql& append(std::int64_t number);
    std::string text_;
};

inline Sql operator+(Sql statement, Fragment piece) {
    return std::move(statement += piece);
}
template <typename T>
requires requires(Sql s, const T& t) {
    s += t;
} &&(!std::convertible_to<T, Fragment>)Sql operator+(Sql statement, const T& piece) {
    return std::move(statement += piece);
}

}  // namespace database
