#include "database/tsql/scanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "common/text.h"
#include "database/error.h"

namespace database::tsql {

namespace {

// More than any statement of the program; a bound on how deep a tree of them can grow.
constexpr std::size_t most_tokens = 20'000;

// What a character begins, looked up once per character of every statement. `name` and `digit` come first:
// only these can continue a name.
enum class Class : unsigned char { name, digit, blank, point, quote, bracket, mark, symbol, stray };

constexpr auto classes = [] {
    std::array<Class, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c) {
        const bool is_letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c >= 0x80;
        table[c] = is_letter              ? Class::name
                   : c >= '0' && c <= '9' ? Class::digit
                   : c <= ' '             ? Class::blank
                                          : Class::stray;
    }
    for (const unsigned char c : {'_', '#', '@', '$'})
        table[c] = Class::name;
    for (const unsigned char c : {'+', '-', '*', '/', '%', '=', '<', '>', '(', ')', ',', ';', '!'})
        table[c] = Class::symbol;
    table['.'] = Class::point;
    table['\''] = Class::quote;
    table['['] = table['"'] = Class::bracket;
    table['?'] = Class::mark;
    return table;
}();

Class class_of(char c) {
    return classes[static_cast<unsigned char>(c)];
}

// A piece of the statement, with its quotes; blanks and comments stand between pieces.
struct Piece {
    enum class Kind { end, name, quoted_name, text, number, mark, symbol };
    Kind kind = Kind::end;
    std::size_t begin = 0, end = 0;
};

class Scanner {
  public:
    Scanner(std::string_view text, const std::vector<Value>& parameters)
        : text_(text), parameters_(parameters) {}

    Piece next() {
        skip_blanks();
        Piece piece{Piece::Kind::end, at_, at_};
        if (at_ < text_.size()) {
            piece.kind = read();
            piece.end = at_;
        } else if (used_ != parameters_.size()) {
            fail("The statement has more values than marks \"?\".");
        }
        return piece;
    }

    // The text between the quotes, with doubled closing quotes reduced to one.
    std::string unquoted(const Piece& piece) const {
        const std::size_t open = piece.begin + (class_of(text_[piece.begin]) == Class::name ? 1 : 0);  // N'…'
        std::string found(text_, open + 1, piece.end - open - 2);
        const char closing = text_[piece.end - 1];
        for (auto quote = found.find(closing); quote != found.npos; quote = found.find(closing, quote + 1))
            found.erase(quote, 1);
        return found;
    }

    // The value of a text, a number or a mark.
    Value value(const Piece& piece) {
        if (piece.kind == Piece::Kind::text) return unquoted(piece);
        if (piece.kind == Piece::Kind::number) return number(piece);
        if (used_ == parameters_.size()) fail("The statement has more marks \"?\" than values.");
        return parameters_[used_++];
    }

    [[noreturn]] void fail(const std::string& why) const { throw Error("42000", why, std::string(text_)); }

  private:
    char at(std::size_t offset) const { return at_ + offset < text_.size() ? text_[at_ + offset] : '\0'; }
    bool is_digit(std::size_t offset) const { return at(offset) >= '0' && at(offset) <= '9'; }

    void skip_blanks() {
        while (at_ < text_.size()) {
            if (class_of(text_[at_]) == Class::blank) {
                ++at_;
            } else if (text_[at_] == '-' && at(1) == '-') {
                at_ = std::min(text_.find('\n', at_), text_.size());
            } else if (text_[at_] == '/' && at(1) == '*') {
                skip_comment();
            } else {
                return;
            }
        }
    }

    void skip_comment() {
        int depth = 0;
        do {
            if (at_ >= text_.size()) fail("Missing end comment mark '*/'.");
            const std::string_view pair = text_.substr(at_, 2);
            depth += pair == "/*" ? 1 : pair == "*/" ? -1 : 0;
            at_ += pair == "/*" || pair == "*/" ? 2 : 1;
        } while (depth > 0);
    }

    // Moves behind the piece that begins here.
    Piece::Kind read() {
        const char c = text_[at_];
        switch (class_of(c)) {
            case Class::name:
                if ((c == 'N' || c == 'n') && at(1) == '\'') {
                    ++at_;
                    return read_quoted('\'', Piece::Kind::text);
                }
                while (at_ < text_.size() && class_of(text_[at_]) <= Class::digit)
                    ++at_;
                return Piece::Kind::name;
            case Class::digit:
                return read_number();
            case Class::point:
                return is_digit(1) ? read_number() : read_symbol();
            case Class::quote:
                return read_quoted('\'', Piece::Kind::text);
            case Class::bracket:
                return read_quoted(c == '[' ? ']' : '"', Piece::Kind::quoted_name);
            case Class::mark:
                ++at_;
                return Piece::Kind::mark;
            case Class::symbol:
                return read_symbol();
            default:
                fail("Incorrect syntax near '" + std::string(1, c) + "'.");
        }
    }

    Piece::Kind read_quoted(char closing, Piece::Kind kind) {
        const std::size_t begin = at_ + 1;
        for (std::size_t end = begin; (end = text_.find(closing, end)) != text_.npos; end += 2) {
            if (end + 1 < text_.size() && text_[end + 1] == closing) continue;
            if (kind == Piece::Kind::quoted_name && end == begin)
                fail("An object or column name is missing or empty.");
            at_ = end + 1;
            return kind;
        }
        const std::string what = kind == Piece::Kind::text ? "the character string" : "the name";
        fail("Unclosed quotation mark after " + what + " '" + std::string(text_.substr(begin)) + "'.");
    }

    // A word may follow a number at once: "stcode = 1and cash_no = 2" is a statement of the shift check.
    Piece::Kind read_number() {
        const auto skip_digits = [&] {
            while (is_digit(0))
                ++at_;
        };
        skip_digits();
        if (at(0) == '.') {
            ++at_;
            skip_digits();
        }
        if ((at(0) == 'e' || at(0) == 'E') &&
            (is_digit(1) || ((at(1) == '+' || at(1) == '-') && is_digit(2)))) {
            at_ += 2;
            skip_digits();
        }
        return Piece::Kind::number;
    }

    Value number(const Piece& piece) const {
        const std::string_view digits = text_.substr(piece.begin, piece.end - piece.begin);
        const char* const end = digits.data() + digits.size();
        std::int64_t whole = 0;
        if (const auto read = std::from_chars(digits.data(), end, whole);
            read.ec == std::errc{} && read.ptr == end) {
            return whole;
        }
        double decimal = 0;
        if (std::from_chars(digits.data(), end, decimal).ec != std::errc{})
            fail("The number '" + std::string(digits) + "' is out of the range.");
        return decimal;
    }

    Piece::Kind read_symbol() {
        static constexpr std::string_view of_two[] = {"<=", ">=", "<>", "!="};
        const bool is_pair =
            std::find(std::begin(of_two), std::end(of_two), text_.substr(at_, 2)) != std::end(of_two);
        if (!is_pair && text_[at_] == '!') fail("Incorrect syntax near '!'.");
        at_ += is_pair ? 2 : 1;
        return Piece::Kind::symbol;
    }

    std::string_view text_;
    const std::vector<Value>& parameters_;
    std::size_t at_ = 0;
    std::size_t used_ = 0;  // of the parameters
};

}  // namespace

Tokens tokenize(std::string_view statement, const std::vector<Value>& parameters) {
    Scanner scanner(statement, parameters);
    Tokens made;
    Piece piece;
    do {
        piece = scanner.next();
        Token token{Token::Kind::end, {}, {}, 0, piece.begin};
        switch (piece.kind) {
            case Piece::Kind::end:
                break;
            case Piece::Kind::name:
            case Piece::Kind::symbol:
                token.kind = piece.kind == Piece::Kind::name ? Token::Kind::name : Token::Kind::symbol;
                token.text = statement.substr(piece.begin, piece.end - piece.begin);
                break;
            case Piece::Kind::quoted_name:
                token.kind = Token::Kind::quoted_name;
                token.text = scanner.unquoted(piece);
                break;
            case Piece::Kind::text:
            case Piece::Kind::number:
            case Piece::Kind::mark:
                token.kind = Token::Kind::value;
                token.slot = made.values.size();
                made.values.push_back(scanner.value(piece));
                break;
        }
        if (token.kind == Token::Kind::name || token.kind == Token::Kind::quoted_name)
            token.lower = common::lower_ascii(token.text);
        made.list.push_back(std::move(token));
        if (made.list.size() > most_tokens) scanner.fail("The statement is too long.");
    } while (piece.kind != Piece::Kind::end);
    return made;
}

void read_shape(std::string_view statement, const std::vector<Value>& parameters, Shape& shape) {
    shape.text.clear();
    shape.values.clear();
    Scanner scanner(statement, parameters);
    std::size_t copied = 0;  // what stands before is in the shape
    for (Piece piece = scanner.next(); piece.kind != Piece::Kind::end; piece = scanner.next()) {
        if (piece.kind != Piece::Kind::text && piece.kind != Piece::Kind::number &&
            piece.kind != Piece::Kind::mark)
            continue;
        const Value& value = shape.values.emplace_back(scanner.value(piece));
        shape.text.append(statement, copied, piece.begin - copied);
        shape.text += '?';
        shape.text += kind_mark(value);
        copied = piece.end;
    }
    shape.text.append(statement, copied);
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

}  // namespace database::tsql
