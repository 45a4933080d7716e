// Expressions, from the loosest operator to the tightest.
#include "database/error.h"
#include "database/tsql/parser.h"

namespace database::tsql {

namespace {

using Kind = Expression::Kind;

ExpressionPtr node(Kind kind, std::string name = {}) {
    auto made = std::make_unique<Expression>();
    made->kind = kind;
    made->name = std::move(name);
    return made;
}

template <typename... Parts>
ExpressionPtr node_of(Kind kind, std::string name, Parts... parts) {
    auto made = node(kind, std::move(name));
    (made->parts.push_back(std::move(parts)), ...);
    return made;
}

}  // namespace

// Limits nesting, so that no statement can exhaust the stack.
class Parser::Deeper {
  public:
    explicit Deeper(Parser& parser) : parser_(parser) {
        if (++parser_.depth_ > 120) parser_.fail("The statement is nested too deeply.");
    }
    ~Deeper() { --parser_.depth_; }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;

  private:
    Parser& parser_;
};

ExpressionPtr Parser::expression() {
    const Deeper guard(*this);
    auto left = conjunction();
    while (accept_word("or"))
        left = node_of(Kind::binary, "or", std::move(left), conjunction());
    return left;
}

ExpressionPtr Parser::conjunction() {
    auto left = negation();
    while (accept_word("and"))
        left = node_of(Kind::binary, "and", std::move(left), negation());
    return left;
}

ExpressionPtr Parser::negation() {
    const Deeper guard(*this);
    if (accept_word("not")) return node_of(Kind::unary, "not", negation());
    return comparison();
}

ExpressionPtr Parser::comparison() {
    auto left = sum();
    while (true) {
        static constexpr std::string_view operators[] = {"=", "<>", "!=", "<=", ">=", "<", ">"};
        static constexpr std::string_view meanings[] = {"=", "<>", "<>", "<=", ">=", "<", ">"};
        bool found = false;
        for (std::size_t i = 0; i < std::size(operators) && !found; ++i) {
            if (!accept_symbol(operators[i])) continue;
            if (is_word("any") || is_word("all") || is_word("some")) fail_here();
            left = node_of(Kind::binary, std::string(meanings[i]), std::move(left), sum());
            found = true;
        }
        if (found) continue;
        const bool more =
            is_word("is") || is_word("in") || is_word("between") || is_word("like") ||
            (is_word("not") && (is_word("in", 1) || is_word("between", 1) || is_word("like", 1)));
        if (!more) return left;
        left = predicate(std::move(left));
    }
}

ExpressionPtr Parser::predicate(ExpressionPtr left) {
    if (accept_word("is")) {
        const bool negated = accept_word("not");
        expect_word("null");
        auto made = node_of(Kind::is_null, "", std::move(left));
        made->negated = negated;
        return made;
    }
    const bool negated = accept_word("not");
    ExpressionPtr made;
    if (accept_word("between")) {
        auto low = sum();
        expect_word("and");
        made = node_of(Kind::between, "", std::move(left), std::move(low), sum());
    } else if (accept_word("like")) {
        made = node_of(Kind::like, "", std::move(left), sum());
        if (is_word("escape")) fail("LIKE … ESCAPE is not available on the embedded engine; use [%].");
    } else {
        expect_word("in");
        expect_symbol("(");
        if (is_word("select")) {
            made = node_of(Kind::in_select, "", std::move(left));
            made->query = query();
        } else {
            made = node_of(Kind::in_list, "", std::move(left));
            do {
                made->parts.push_back(expression());
            } while (accept_symbol(","));
        }
        expect_symbol(")");
    }
    made->negated = negated;
    return made;
}

ExpressionPtr Parser::sum() {
    auto left = product();
    while (is_symbol("+") || is_symbol("-")) {
        std::string op = take().text;
        left = node_of(Kind::binary, std::move(op), std::move(left), product());
    }
    return left;
}

ExpressionPtr Parser::product() {
    auto left = sign();
    while (is_symbol("*") || is_symbol("/") || is_symbol("%")) {
        std::string op = take().text;
        left = node_of(Kind::binary, std::move(op), std::move(left), sign());
    }
    return left;
}

ExpressionPtr Parser::sign() {
    const Deeper guard(*this);
    if (accept_symbol("-")) return node_of(Kind::unary, "-", sign());
    if (accept_symbol("+")) return sign();
    auto made = primary();
    if (accept_word("collate")) name("a collation");  // every text compares the same way, whatever it says
    return made;
}

ExpressionPtr Parser::primary() {
    const Token& token = peek();
    if (token.kind == Token::Kind::value) {
        take();
        auto made = node(Kind::value);
        made->slot = token.slot;
        return made;
    }
    if (accept_symbol("(")) {
        if (is_word("select")) {
            auto made = node(Kind::select);
            made->query = query();
            expect_symbol(")");
            return made;
        }
        auto made = expression();
        expect_symbol(")");
        return made;
    }
    if (accept_word("null")) return node(Kind::null);
    if (accept_word("case")) return branch();
    if (accept_word("exists")) {
        auto made = node(Kind::exists);
        expect_symbol("(");
        made->query = query();
        expect_symbol(")");
        return made;
    }
    if (is_word("convert") || is_word("cast")) return conversion();
    return column_or_call();
}

ExpressionPtr Parser::branch() {
    auto made = node(Kind::branch);
    if (!is_word("when")) {
        made->has_operand = true;
        made->parts.push_back(expression());
    }
    while (accept_word("when")) {
        made->parts.push_back(expression());
        expect_word("then");
        made->parts.push_back(expression());
    }
    if (made->parts.size() < 2) fail_here();
    if (accept_word("else")) {
        made->has_else = true;
        made->parts.push_back(expression());
    }
    expect_word("end");
    return made;
}

ExpressionPtr Parser::conversion() {
    const bool is_cast = take().lower == "cast";
    expect_symbol("(");
    auto made = node(Kind::convert);
    if (is_cast) {
        made->parts.push_back(expression());
        expect_word("as");
        made->type = data_type();
    } else {
        made->type = data_type();
        expect_symbol(",");
        made->parts.push_back(expression());
        if (accept_symbol(",")) made->parts.push_back(expression());
    }
    expect_symbol(")");
    // Without a width a converted text is 30 characters long.
    if (made->type.is_text() && made->type.written.find('(') == std::string::npos && made->type.length == 1) {
        made->type.length = 30;
    }
    return made;
}

ExpressionPtr Parser::call(std::string function) {
    auto made = node(Kind::function, std::move(function));
    if (accept_symbol(")")) return made;
    if (accept_word("distinct")) {
        made->distinct = true;
    } else {
        accept_word("all");
    }
    do {
        if (is_symbol("*") && (is_symbol(")", 1))) {
            take();
            made->parts.push_back(node(Kind::all));
        } else {
            made->parts.push_back(expression());
        }
    } while (accept_symbol(","));
    expect_symbol(")");
    if (is_word("over")) fail("OVER (window functions) is not available on the embedded engine.");
    return made;
}

ExpressionPtr Parser::column_or_call() {
    const Token& token = peek();
    const bool callable =
        token.lower == "left" || token.lower == "right" || token.lower == "coalesce" || is_name();
    if (token.kind == Token::Kind::name && callable && is_symbol("(", 1)) {
        std::string function = take().lower;
        take();
        return call(std::move(function));
    }
    if (token.kind == Token::Kind::name && token.text.starts_with("@@")) {
        fail("'" + token.text + "' is not available on the embedded engine.");
    }
    std::string first = name("an expression");
    auto made = node(Kind::column);
    while (accept_symbol(".")) {
        made->table = std::move(first);
        if (accept_symbol("*")) {
            made->kind = Kind::all;
            return made;
        }
        first = name("a column");
    }
    made->name = std::move(first);
    return made;
}

}  // namespace database::tsql
