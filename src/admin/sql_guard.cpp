#include "admin/sql_guard.h"

#include <algorithm>
#include <array>

#include "database/error.h"
#include "database/tsql/scanner.h"

namespace admin {

using database::tsql::Token;

namespace {

class Reading {
  public:
    explicit Reading(const std::vector<Token>& tokens) : tokens_(tokens) {}

    StatementEffect run() {
        while (!at_end()) {
            const std::string word = word_at(at_);
            if (word == "insert" || word == "update" || word == "delete" || word == "merge" ||
                word == "truncate") {
                effect_.changes = true;
                ++at_;
                row_change(word);
            } else if (word == "drop") {
                effect_.changes = true;
                effect_.dangers.push_back("drops " + object_after(at_));
                ++at_;
            } else {
                // Only a select just reads; every other statement may define tables or run procedures.
                if (is_begin(at_) && !word.empty() && word != "select" && word != "with")
                    effect_.changes = true;
                if (word == "into") effect_.changes = true;
                ++at_;
            }
        }
        return std::move(effect_);
    }

  private:
    bool at_end() const { return tokens_[at_].kind == Token::Kind::end; }
    bool is_begin(std::size_t at) const { return at == 0 || is_symbol(at - 1, ";"); }
    bool is_symbol(std::size_t at, std::string_view symbol) const {
        return tokens_[at].kind == Token::Kind::symbol && tokens_[at].text == symbol;
    }
    // A bare word in lower case; empty for a name in brackets, a value or a symbol.
    std::string word_at(std::size_t at) const {
        return tokens_[at].kind == Token::Kind::name ? tokens_[at].lower : std::string();
    }
    bool is_name(std::size_t at) const {
        return tokens_[at].kind == Token::Kind::name || tokens_[at].kind == Token::Kind::quoted_name;
    }

    // "dbo.items": the words of a name up to the one that counts.
    std::string name_from(std::size_t& at) const {
        std::string name = is_name(at) ? tokens_[at].text : std::string();
        while (is_name(at) && is_symbol(at + 1, ".") && is_name(at + 2))
            name = tokens_[at += 2].text;
        return name;
    }

    // After "drop": "the table x".
    std::string object_after(std::size_t at) const {
        const std::string kind = word_at(at + 1);
        std::size_t name = at + 2;
        return kind.empty() ? "something" : "the " + kind + " " + name_from(name);
    }

    void row_change(const std::string& verb) {
        while (word_at(at_) == "into" || word_at(at_) == "from" || word_at(at_) == "table")
            ++at_;
        if (word_at(at_) == "top") skip_top();
        while (word_at(at_) == "into" || word_at(at_) == "from")
            ++at_;
        std::string table = name_from(at_);
        const std::size_t begin = at_;
        bool has_where = false;
        int depth = 0;
        for (; !at_end(); ++at_) {
            if (is_symbol(at_, "(")) ++depth;
            if (is_symbol(at_, ")")) --depth;
            if (depth > 0) continue;
            const std::string word = word_at(at_);
            if (word == "where") has_where = true;
            if (is_symbol(at_, ";") || (at_ > begin && begins_statement(word))) break;
        }
        table = behind_alias(table, begin);
        effect_.tables.push_back(table);
        if (verb == "truncate") effect_.dangers.push_back("empties the table " + table);
        if (verb == "delete" && !has_where) effect_.dangers.push_back("deletes every row of " + table);
        if (verb == "update" && !has_where) effect_.dangers.push_back("changes every row of " + table);
    }

    static bool begins_statement(std::string_view word) {
        static constexpr std::array words = {"insert",  "update", "delete",  "drop", "truncate", "merge",
                                             "declare", "exec",   "execute", "if",   "select",   "while"};
        return std::find(words.begin(), words.end(), word) != words.end();
    }

    void skip_top() {
        ++at_;
        if (!is_symbol(at_, "(")) {
            ++at_;
            return;
        }
        int depth = 0;
        do {
            if (is_symbol(at_, "(")) ++depth;
            if (is_symbol(at_, ")")) --depth;
            if (!at_end()) ++at_;
        } while (depth > 0 && !at_end());
    }

    // The table of "update i set … from items i", where `name` is "i".
    std::string behind_alias(const std::string& name, std::size_t begin) const {
        for (std::size_t at = begin; at + 1 < at_; ++at) {
            const std::string word = word_at(at);
            if (word != "from" && word != "join" && !is_symbol(at, ",")) continue;
            std::size_t table = at + 1;
            const std::string named = name_from(table);
            std::size_t alias = table + 1;
            if (word_at(alias) == "as") ++alias;
            if (!named.empty() && alias < at_ && is_name(alias) && tokens_[alias].lower == lower(name))
                return named;
        }
        return name;
    }

    static std::string lower(std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
        return text;
    }

    const std::vector<Token>& tokens_;
    std::size_t at_ = 0;
    StatementEffect effect_;
};

}  // namespace

StatementEffect effect_of(std::string_view statement) {
    try {
        const auto tokens = database::tsql::tokenize(statement, {});
        return Reading(tokens.list).run();
    } catch (const database::Error&) {
        return {true, {}, {"does something that this tool cannot read"}};
    }
}

}  // namespace admin
