#include "support/strict.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "common/text.h"
#include "database/embedded/writer.h"
#include "database/error.h"
#include "database/tsql/parser.h"

namespace test {

namespace strict {

void StatementCheck::check(const Statement& statement) {
    if (const auto* select = std::get_if<std::unique_ptr<Select>>(&statement)) {
        query(**select, Place::statement);
    } else if (const auto* insert = std::get_if<Insert>(&statement)) {
        check_insert(*insert);
    } else if (const auto* update = std::get_if<Update>(&statement)) {
        check_update(*update);
    } else if (const auto* remove = std::get_if<Delete>(&statement)) {
        Scope scope;
        add_sources(remove->from, scope);
        if (const Table* table = catalog_.find(remove->table); table != nullptr && remove->from.empty())
            scope.sources.push_back({remove->table, &table->columns});
        scope_ = &scope;
        if (remove->where) type_of(*remove->where);
    }
}

// Checks the conversion of a value that is stored without a CONVERT.
void StatementCheck::check_stored(const std::string& column, const Typed& value, const Type& type) {
    const Rank to = rank_of(type);
    if (value.is_text() && to != Rank::text && to != Rank::large) check_converts(value, to);
    // The server would write six digits, or "1.23457e+006".
    if (value.rank == Rank::real || value.rank == Rank::floating)
        if (to == Rank::text)
            refuse("22001", "A number with decimals is cut to six digits in '" + column + "'.");
    if (value.is_moment() && to >= Rank::bit && to <= Rank::floating)
        refuse("42000", "Implicit conversion from data type datetime to " + std::string(name_of(to)) +
                            " is not allowed (column '" + column + "').");
}

void StatementCheck::check_insert(const Insert& insert) {
    const Table* table = catalog_.find(insert.table);
    if (table != nullptr && table->view) table = renamed_table(catalog_, *table);
    if (table == nullptr) return;
    std::vector<const Column*> targets;
    for (const std::string& name : insert.columns) {
        const int at = table->find(name);
        if (at < 0) return;
        targets.push_back(&table->columns[static_cast<std::size_t>(at)]);
    }
    if (insert.columns.empty()) {
        for (const Column& each : table->columns)
            targets.push_back(&each);
    }
    const auto store = [&](std::size_t at, const Typed& value) {
        if (at < targets.size()) check_stored(targets[at]->name, value, targets[at]->type);
    };
    if (insert.query) {
        const auto heads = query(*insert.query, Place::statement);
        for (std::size_t at = 0; at < heads.size(); ++at)
            store(at, heads[at].type);
    }
    if (insert.rows.size() > 1000) refuse("42000", "The number of row value expressions exceeds 1000.");
    for (const auto& row : insert.rows)
        for (std::size_t at = 0; at < row.size(); ++at)
            store(at, type_of(*row[at]));
}

void StatementCheck::check_update(const Update& update) {
    Scope scope;
    add_sources(update.from, scope);
    const Table* table = catalog_.find(update.table);
    for (const Source& source : update.from)
        if (table == nullptr && common::equal_ignoring_case(source.alias, update.table))
            table = catalog_.find(source.table);
    if (table == nullptr) return;
    if (table->view) table = renamed_table(catalog_, *table);
    if (table == nullptr) return;
    if (update.from.empty()) scope.sources.push_back({update.table, &table->columns});
    scope_ = &scope;
    for (const auto& [name, expression] : update.sets) {
        if (has_aggregate(*expression))
            refuse("42000", "An aggregate may not appear in the set list of an UPDATE statement.");
        const Typed value = type_of(*expression);
        const int at = table->find(name);
        if (at >= 0) check_stored(name, value, table->columns[static_cast<std::size_t>(at)].type);
    }
    if (update.where) type_of(*update.where);
}

}  // namespace strict

namespace {

std::string on_one_line(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\t' || c == '\r'; }, ' ');
    return text;
}

}  // namespace

StrictReader::StrictReader() {
    if (const char* list = std::getenv("TALLVEX_SQL_LIST")) list_ = list;
}

void StrictReader::install(bool on) {
    using database::embedded::EmbeddedConnection;
    EmbeddedConnection::observe_all(
        on ? [] { return std::unique_ptr<database::embedded::StatementObserver>(std::make_unique<StrictReader>()); }
           : EmbeddedConnection::MakeObserver());
}

void StrictReader::before(std::string_view statement, const std::vector<database::Value>& values,
                          const database::embedded::Catalog& catalog) {
    using namespace database::tsql;
    using namespace database::embedded;
    using database::Error;
    const auto note = [&](const std::string& verdict) {
        if (list_.empty()) return;
        std::string line = verdict + '\t' + on_one_line(std::string(statement)) + '\t';
        for (const database::Value& value : values)
            line += (is_null(value) ? "null" : on_one_line(text_of(value))) + ", ";
        std::ofstream(list_, std::ios::app) << line + '\n';
    };
    Tokens tokens;
    std::set<std::size_t> pinned;
    Statement tree;
    try {
        tokens = tokenize(statement, values);
        tree = Parser(statement, tokens, pinned).statement();
    } catch (const Error& error) {
        note("unread: " + on_one_line(error.what()));
        return;
    }
    std::set<std::size_t> marks;
    for (const Token& token : tokens.list)
        if (token.kind == Token::Kind::value && statement[token.begin] == '?') marks.insert(token.slot);
    try {
        strict::StatementCheck(catalog, tokens.values, std::move(marks)).check(tree);
    } catch (const Error& error) {
        note("refused: " + on_one_line(error.what()));
        throw;
    }
    note("ok");
}

}  // namespace test
