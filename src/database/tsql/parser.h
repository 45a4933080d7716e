// Parses the tokens of a Transact-SQL statement into a tree. Unknown syntax is an error that names it.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "database/tsql/scanner.h"
#include "database/tsql/syntax.h"

namespace database::tsql {

class Parser {
  public:
    // `pinned` receives the slots whose values shaped the tree: a translation holds only for these values.
    Parser(std::string_view text, const Tokens& tokens, std::set<std::size_t>& pinned)
        : text_(text), tokens_(tokens), pinned_(pinned) {}

    // The whole statement, and nothing after it but ";". Throws Error 42000.
    Statement statement();
    // A query alone, as in a view.
    std::unique_ptr<Select> whole_query();

  private:
    // Token by token.
    const Token& peek(std::size_t ahead = 0) const;
    const Token& take();
    bool is_word(std::string_view word, std::size_t ahead = 0) const;
    bool is_symbol(std::string_view symbol, std::size_t ahead = 0) const;
    bool accept_word(std::string_view word);
    bool accept_symbol(std::string_view symbol);
    void expect_word(std::string_view word);
    void expect_symbol(std::string_view symbol);
    bool is_name(std::size_t ahead = 0) const;
    std::string name(std::string_view what);
    // A table, view or index with an optional "dbo." before it.
    std::string object_name();
    std::vector<std::string> name_list();
    // A number that decides the form of the translation.
    int pinned_integer();
    Type data_type();
    std::string near() const;
    [[noreturn]] void fail_here() const;
    [[noreturn]] void fail(const std::string& why) const;

    // Expressions.
    class Deeper;
    ExpressionPtr expression();
    ExpressionPtr conjunction();
    ExpressionPtr negation();
    ExpressionPtr comparison();
    ExpressionPtr predicate(ExpressionPtr left);
    ExpressionPtr sum();
    ExpressionPtr product();
    ExpressionPtr sign();
    ExpressionPtr primary();
    ExpressionPtr branch();
    ExpressionPtr conversion();
    ExpressionPtr call(std::string function);
    ExpressionPtr column_or_call();

    // Queries and changes.
    std::unique_ptr<Select> query();
    std::unique_ptr<Select> simple_query();
    void select_items(Select& select);
    std::vector<Source> sources();
    Source source();
    std::string alias();
    Statement insert();
    Statement update();
    Statement remove();
    ExpressionPtr top();

    // Definitions.
    Statement create();
    Statement create_table();
    Statement create_index(bool unique);
    Statement create_view();
    Statement drop();
    Statement alter();
    ColumnDefinition column_definition();
    void column_options(ColumnDefinition& column);
    std::vector<std::string> primary_key();
    std::vector<std::string> key_columns();
    void index_options();
    Statement setting();

    std::string_view text_;
    const Tokens& tokens_;
    std::set<std::size_t>& pinned_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

}  // namespace database::tsql
