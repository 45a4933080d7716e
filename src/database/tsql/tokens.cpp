#include "database/tsql/tokens.h"

#include "common/text.h"
#include "database/error.h"
#include "database/tsql/outline.h"

namespace database::tsql {

namespace {

// More than any statement of the program; a bound on how deep a tree of them can grow.
constexpr std::size_t most_tokens = 20'000;

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool is_name_start(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '#' || c == '@' || c == '$' ||
           static_cast<unsigned char>(c) >= 0x80;
}

class Tokenizer {
  public:
    Tokenizer(std::string_view text, const std::vector<Value>& parameters)
        : text_(text), parameters_(parameters) {}

    Tokens all() {
        while (skip_blanks()) {
            begin_ = at_;
            next();
            if (out_.list.size() > most_tokens) fail("The statement is too long.");
        }
        begin_ = text_.size();
        if (used_ != parameters_.size()) fail("The statement has more values than marks \"?\".");
        push({});
        return std::move(out_);
    }

  private:
    [[noreturn]] void fail(const std::string& why) const { throw Error("42000", why, std::string(text_)); }
    char at(std::size_t offset = 0) const { return at_ + offset < text_.size() ? text_[at_ + offset] : '\0'; }

    void push(Token token) {
        token.begin = begin_;
        out_.list.push_back(std::move(token));
    }

    // False at the end of the statement.
    bool skip_blanks() {
        while (at_ < text_.size()) {
            if (static_cast<unsigned char>(at()) <= ' ') {
                ++at_;
            } else if (at() == '-' && at(1) == '-') {
                const auto end = text_.find('\n', at_);
                at_ = end == text_.npos ? text_.size() : end;
            } else if (at() == '/' && at(1) == '*') {
                skip_comment();
            } else {
                return true;
            }
        }
        return false;
    }

    void skip_comment() {
        int depth = 0;
        do {
            if (at_ >= text_.size()) fail("Missing end comment mark '*/'.");
            if (at() == '/' && at(1) == '*') {
                ++depth;
                at_ += 2;
            } else if (at() == '*' && at(1) == '/') {
                --depth;
                at_ += 2;
            } else {
                ++at_;
            }
        } while (depth > 0);
    }

    void next() {
        const char c = at();
        if (c == '\'') return value(Value(until('\'')));
        if ((c == 'N' || c == 'n') && at(1) == '\'') {
            ++at_;
            return value(Value(until('\'')));
        }
        if (c == '[') return quoted_name(']');
        if (c == '"') return quoted_name('"');
        if (is_digit(c) || (c == '.' && is_digit(at(1)))) return number();
        if (is_name_start(c)) return name();
        if (c == '?') return parameter();
        symbol();
    }

    // The text up to the closing quote, which stands for itself when doubled.
    std::string until(char closing) {
        ++at_;
        std::string found;
        while (true) {
            if (at_ >= text_.size()) {
                fail(closing == ']' ? "Unclosed quotation mark after the name '" + found + "'."
                                    : "Unclosed quotation mark after the character string '" + found + "'.");
            }
            const char c = text_[at_++];
            if (c == closing) {
                if (at() != closing) return found;
                ++at_;
            }
            found += c;
        }
    }

    void value(Value v) {
        push({Token::Kind::value, {}, {}, out_.values.size(), 0});
        out_.values.push_back(std::move(v));
    }

    void parameter() {
        ++at_;
        if (used_ >= parameters_.size()) fail("The statement has more marks \"?\" than values.");
        value(parameters_[used_++]);
    }

    void quoted_name(char closing) {
        std::string text = until(closing);
        if (text.empty()) fail("An object or column name is missing or empty.");
        std::string lower = common::lower_ascii(text);
        push({Token::Kind::quoted_name, std::move(text), std::move(lower), 0, 0});
    }

    void name() {
        const std::size_t begin = at_;
        while (is_name_start(at()) || is_digit(at()))
            ++at_;
        std::string text(text_.substr(begin, at_ - begin));
        std::string lower = common::lower_ascii(text);
        push({Token::Kind::name, std::move(text), std::move(lower), 0, 0});
    }

    void number() {
        std::size_t length = 0;
        Value found = leading_number(text_.substr(at_), length);
        if (is_null(found))
            fail("The number '" + std::string(text_.substr(at_, length)) + "' is out of the range.");
        at_ += length;
        value(std::move(found));
    }

    void symbol() {
        static constexpr std::string_view two[] = {"<=", ">=", "<>", "!=", "!<", "!>"};
        for (const auto pair : two) {
            if (text_.substr(at_, 2) == pair) return push_symbol(pair);
        }
        static constexpr std::string_view one = "+-*/%=<>(),.;&|^~";
        if (one.find(at()) == one.npos) fail("Incorrect syntax near '" + std::string(1, at()) + "'.");
        push_symbol(text_.substr(at_, 1));
    }

    void push_symbol(std::string_view text) {
        at_ += text.size();
        push({Token::Kind::symbol, std::string(text), {}, 0, 0});
    }

    std::string_view text_;
    const std::vector<Value>& parameters_;
    std::size_t at_ = 0;
    std::size_t begin_ = 0;  // of the token being read
    std::size_t used_ = 0;
    Tokens out_;
};

}  // namespace

Tokens tokenize(std::string_view statement, const std::vector<Value>& parameters) {
    return Tokenizer(statement, parameters).all();
}

}  // namespace database::tsql
