#include "database/tsql/outline.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace database::tsql {

namespace {

// What a character calls for, looked up once per character of every statement.
enum class Class : unsigned char { other, name, digit, point, quote, bracket, mark, dash, slash };

constexpr auto classes = [] {
    std::array<Class, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c >= 0x80) table[c] = Class::name;
        if (c >= '0' && c <= '9') table[c] = Class::digit;
    }
    for (const unsigned char c : {'_', '#', '@', '$'})
        table[c] = Class::name;
    table['.'] = Class::point;
    table['\''] = Class::quote;
    table['['] = table['"'] = Class::bracket;
    table['?'] = Class::mark;
    table['-'] = Class::dash;
    table['/'] = Class::slash;
    return table;
}();

Class class_of(char c) {
    return classes[static_cast<unsigned char>(c)];
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

class Outliner {
  public:
    Outliner(std::string_view text, const std::vector<Value>& parameters, Outline& made)
        : text_(text), parameters_(parameters), made_(made) {
        made_.shape.clear();
        made_.values.clear();
    }

    bool all() {
        while (true) {
            while (at_ < text_.size() && class_of(text_[at_]) <= Class::name)
                ++at_;
            if (at_ >= text_.size()) break;
            if (!next()) return false;
        }
        copy_up_to(text_.size());
        return used_ == parameters_.size();
    }

  private:
    char at(std::size_t offset) const { return at_ + offset < text_.size() ? text_[at_ + offset] : '\0'; }

    // Whether what stands at a position goes on with a name that began before it.
    bool is_within_name(std::size_t position) const {
        if (position == copied_) return false;
        const Class before = class_of(text_[position - 1]);
        return before == Class::name || before == Class::digit;
    }

    bool next() {
        switch (class_of(text_[at_])) {
            case Class::digit:
                if (!is_within_name(at_)) return number();
                break;
            case Class::point:
                if (is_digit(at(1))) return number();
                break;
            case Class::quote:
                return literal();
            case Class::bracket:
                return quoted_name(text_[at_] == '[' ? ']' : '"');
            case Class::mark:
                if (used_ == parameters_.size()) return false;
                copy_up_to(at_);
                value(parameters_[used_++]);
                copied_ = ++at_;
                return true;
            case Class::dash:
                if (at(1) != '-') break;
                at_ = std::min(text_.find('\n', at_), text_.size());
                return true;
            case Class::slash:
                if (at(1) != '*') break;
                return comment();
            case Class::other:
            case Class::name:
                break;
        }
        ++at_;
        return true;
    }

    void copy_up_to(std::size_t end) { made_.shape.append(text_, copied_, end - copied_); }

    void value(const Value& value) {
        made_.shape += '?';
        made_.shape += kind_mark(value);
        made_.values.push_back(value);
    }

    bool number() {
        std::size_t length = 0;
        const Value number = leading_number(text_.substr(at_), length);
        if (is_null(number)) return false;
        copy_up_to(at_);
        value(number);
        copied_ = at_ += length;
        return true;
    }

    // The position behind the closing quote, which stands for itself when doubled; 0 without one.
    std::size_t behind(char closing) const {
        std::size_t end = at_ + 1;
        while ((end = text_.find(closing, end)) != text_.npos) {
            if (end + 1 == text_.size() || text_[end + 1] != closing) return end + 1;
            end += 2;
        }
        return 0;
    }

    bool literal() {
        const std::size_t end = behind('\'');
        if (end == 0) return false;
        // The N of N'…' is no name.
        const bool marked =
            at_ > copied_ && (text_[at_ - 1] == 'N' || text_[at_ - 1] == 'n') && !is_within_name(at_ - 1);
        copy_up_to(marked ? at_ - 1 : at_);
        made_.shape += "?s";
        std::string& found =
            std::get<std::string>(made_.values.emplace_back(std::string(text_, at_ + 1, end - at_ - 2)));
        for (auto quote = found.find("''"); quote != found.npos; quote = found.find("''", quote + 1))
            found.erase(quote, 1);
        copied_ = at_ = end;
        return true;
    }

    bool comment() {
        int depth = 0;
        do {
            if (at_ >= text_.size()) return false;
            const std::string_view pair = text_.substr(at_, 2);
            depth += pair == "/*" ? 1 : pair == "*/" ? -1 : 0;
            at_ += pair == "/*" || pair == "*/" ? 2 : 1;
        } while (depth > 0);
        return true;
    }

    bool quoted_name(char closing) {
        const std::size_t end = behind(closing);
        if (end == 0) return false;
        at_ = end;
        return true;
    }

    std::string_view text_;
    const std::vector<Value>& parameters_;
    Outline& made_;
    std::size_t at_ = 0;
    std::size_t copied_ = 0;  // what stands before is in the shape
    std::size_t used_ = 0;
};

}  // namespace

bool outline(std::string_view statement, const std::vector<Value>& parameters, Outline& made) {
    return Outliner(statement, parameters, made).all();
}

bool fits_int(const Value& value) {
    const auto* number = std::get_if<std::int64_t>(&value);
    return number != nullptr && *number >= std::numeric_limits<std::int32_t>::min() &&
           *number <= std::numeric_limits<std::int32_t>::max();
}

char kind_mark(const Value& value) {
    constexpr char marks[] = {'n', 'l', 'd', 's', 'm'};
    return fits_int(value) ? 'i' : marks[value.index()];
}

Value leading_number(std::string_view text, std::size_t& length) {
    std::size_t end = 0;
    const auto at = [&](std::size_t i) { return i < text.size() ? text[i] : '\0'; };
    const auto skip_digits = [&] {
        while (is_digit(at(end)))
            ++end;
    };
    skip_digits();
    bool whole = true;
    if (at(end) == '.') {
        whole = false;
        ++end;
        skip_digits();
    }
    if ((at(end) == 'e' || at(end) == 'E') &&
        (is_digit(at(end + 1)) || ((at(end + 1) == '+' || at(end + 1) == '-') && is_digit(at(end + 2))))) {
        whole = false;
        end += 2;
        skip_digits();
    }
    // A word may follow at once: "stcode = 1and cash_no = 2" is a statement of the shift check.
    length = end;
    std::int64_t integer = 0;
    if (whole && std::from_chars(text.data(), text.data() + end, integer).ec == std::errc{}) return integer;
    double decimal = 0;
    if (std::from_chars(text.data(), text.data() + end, decimal).ec != std::errc{}) return Null{};
    return decimal;
}

}  // namespace database::tsql
