#include "database/tsql/parser.h"

#include <algorithm>

#include "common/text.h"
#include "database/error.h"

namespace database::tsql {

namespace {

// Reserved words of the server; as names they need brackets.
// clang-format off
constexpr std::string_view reserved[] = {
    "add", "all", "alter", "and", "any", "as", "asc", "authorization", "backup", "begin", "between",
    "break", "browse", "bulk", "by", "cascade", "case", "check", "checkpoint", "close", "clustered",
    "coalesce", "collate", "column", "commit", "compute", "constraint", "contains", "containstable",
    "continue", "convert", "create", "cross", "current", "current_date", "current_time",
    "current_timestamp", "current_user", "cursor", "database", "dbcc", "deallocate", "declare",
    "default", "delete", "deny", "desc", "disk", "distinct", "distributed", "double", "drop", "dump",
    "else", "end", "errlvl", "escape", "except", "exec", "execute", "exists", "exit", "external",
    "fetch", "file", "fillfactor", "for", "foreign", "freetext", "freetexttable", "from", "full",
    "function", "goto", "grant", "group", "having", "holdlock", "identity", "identity_insert",
    "identitycol", "if", "in", "index", "inner", "insert", "intersect", "into", "is", "join", "key",
    "kill", "left", "like", "lineno", "load", "merge", "national", "nocheck", "nonclustered", "not",
    "null", "nullif", "of", "off", "offsets", "on", "open", "opendatasource", "openquery", "openrowset",
    "openxml", "option", "or", "order", "outer", "over", "percent", "pivot", "plan", "precision",
    "primary", "print", "proc", "procedure", "public", "raiserror", "read", "readtext", "reconfigure",
    "references", "replication", "restore", "restrict", "return", "revert", "revoke", "right",
    "rollback", "rowcount", "rowguidcol", "rule", "save", "schema", "securityaudit", "select",
    "session_user", "set", "setuser", "shutdown", "some", "statistics", "system_user", "table",
    "tablesample", "textsize", "then", "to", "top", "tran", "transaction", "trigger", "truncate",
    "tsequal", "union", "unique", "unpivot", "update", "updatetext", "use", "user", "values", "varying",
    "view", "waitfor", "when", "where", "while", "with", "writetext",
};
// clang-format on

bool is_reserved(const std::string& word) {
    return std::binary_search(std::begin(reserved), std::end(reserved), std::string_view(word));
}

}  // namespace

const Token& Parser::peek(std::size_t ahead) const {
    return tokens_.list[std::min(at_ + ahead, tokens_.list.size() - 1)];
}

const Token& Parser::take() {
    const Token& token = peek();
    if (at_ + 1 < tokens_.list.size()) ++at_;
    return token;
}

bool Parser::is_word(std::string_view word, std::size_t ahead) const {
    return peek(ahead).kind == Token::Kind::name && peek(ahead).lower == word;
}

bool Parser::is_symbol(std::string_view symbol, std::size_t ahead) const {
    return peek(ahead).kind == Token::Kind::symbol && peek(ahead).text == symbol;
}

bool Parser::accept_word(std::string_view word) {
    if (!is_word(word)) return false;
    take();
    return true;
}

bool Parser::accept_symbol(std::string_view symbol) {
    if (!is_symbol(symbol)) return false;
    take();
    return true;
}

void Parser::expect_word(std::string_view word) {
    if (!accept_word(word)) fail_here();
}

void Parser::expect_symbol(std::string_view symbol) {
    if (!accept_symbol(symbol)) fail_here();
}

bool Parser::is_name(std::size_t ahead) const {
    const Token& token = peek(ahead);
    return token.kind == Token::Kind::quoted_name ||
           (token.kind == Token::Kind::name && !is_reserved(token.lower));
}

std::string Parser::name(std::string_view what) {
    const Token& token = peek();
    if (token.kind == Token::Kind::name && is_reserved(token.lower)) {
        fail("Incorrect syntax near the keyword '" + token.text + "'.");
    }
    if (!is_name()) fail("Incorrect syntax near " + near() + ": " + std::string(what) + " is missing.");
    if (token.kind == Token::Kind::name && (token.text[0] == '@' || token.text[0] == '#')) {
        fail("'" + token.text +
             "': variables and temporary tables are not available on the embedded engine.");
    }
    return take().text;
}

std::string Parser::object_name() {
    std::string found = name("a name");
    if (accept_symbol(".")) {
        if (!common::equal_ignoring_case(found, "dbo")) {
            fail("'" + found + ".': names of other databases are not available on the embedded engine.");
        }
        found = name("a name");
    }
    return found;
}

std::vector<std::string> Parser::name_list() {
    std::vector<std::string> names;
    expect_symbol("(");
    do {
        names.push_back(name("a column"));
    } while (accept_symbol(","));
    expect_symbol(")");
    return names;
}

int Parser::pinned_integer() {
    const bool negative = accept_symbol("-");
    const Token& token = peek();
    if (token.kind != Token::Kind::value) fail_here();
    const auto* number = std::get_if<std::int64_t>(&tokens_.values[token.slot]);
    if (number == nullptr || *number > 1'000'000) fail("A whole number is expected near " + near() + ".");
    pinned_.insert(token.slot);
    take();
    return static_cast<int>(negative ? -*number : *number);
}

Type Parser::data_type() {
    const Token& token = peek();
    if (token.kind != Token::Kind::name && token.kind != Token::Kind::quoted_name) fail_here();
    const std::string type_name = take().text;
    std::vector<int> arguments;
    if (accept_symbol("(")) {
        do {
            arguments.push_back(accept_word("max") ? -1 : pinned_integer());
        } while (accept_symbol(","));
        expect_symbol(")");
    }
    return named_type(type_name, arguments);
}

std::string Parser::near() const {
    const Token& token = peek();
    if (token.kind == Token::Kind::end) return "the end of the statement";
    if (token.kind == Token::Kind::value) return "a value";
    return "'" + token.text + "'";
}

void Parser::fail_here() const {
    fail("Incorrect syntax near " + near() + ".");
}

void Parser::fail(const std::string& why) const {
    throw Error("42000", why, std::string(text_));
}

Statement Parser::statement() {
    const Token first = peek();
    Statement result = [&]() -> Statement {
        if (is_word("select") || is_symbol("(")) return query();
        if (accept_word("insert")) return insert();
        if (accept_word("update")) return update();
        if (accept_word("delete")) return remove();
        if (accept_word("create")) return create();
        if (accept_word("drop")) return drop();
        if (accept_word("alter")) return alter();
        if (accept_word("set")) return setting();
        const bool begin = accept_word("begin");
        if (begin || is_word("commit") || is_word("rollback")) {
            const bool commit = !begin && take().lower == "commit";
            if (!accept_word("transaction") && !accept_word("tran") && begin) fail_here();
            return Transaction{begin    ? Transaction::What::begin
                               : commit ? Transaction::What::commit
                                        : Transaction::What::rollback};
        }
        if (first.kind == Token::Kind::end) fail("The statement is empty.");
        if (first.kind == Token::Kind::name) {
            fail("'" + first.text + "' statements are not available on the embedded engine.");
        }
        fail_here();
    }();
    while (accept_symbol(";")) {
    }
    if (peek().kind != Token::Kind::end) fail_here();
    return result;
}

std::unique_ptr<Select> Parser::whole_query() {
    auto result = query();
    if (peek().kind != Token::Kind::end) fail_here();
    return result;
}

}  // namespace database::tsql
