// Statements that define tables, indexes and views, and settings.
#include <algorithm>

#include "database/error.h"
#include "database/tsql/parser.h"

namespace database::tsql {

Statement Parser::create() {
    if (accept_word("table")) return create_table();
    if (accept_word("view")) return create_view();
    const bool unique = accept_word("unique");
    if (!accept_word("clustered")) accept_word("nonclustered");
    if (accept_word("index")) return create_index(unique);
    fail("CREATE " + near() + " is not available on the embedded engine.");
}

Statement Parser::create_table() {
    CreateTable made;
    made.table = object_name();
    expect_symbol("(");
    do {
        if (is_word("constraint") || is_word("primary") || is_word("unique") || is_word("foreign") ||
            is_word("check")) {
            made.primary_key = primary_key();
        } else {
            made.columns.push_back(column_definition());
        }
    } while (accept_symbol(","));
    expect_symbol(")");
    index_options();
    for (const auto& column : made.columns) {
        if (column.primary_key) made.primary_key.push_back(column.name);
    }
    return made;
}

ColumnDefinition Parser::column_definition() {
    ColumnDefinition column;
    column.name = name("a column");
    column.type = data_type();
    column_options(column);
    return column;
}

void Parser::column_options(ColumnDefinition& column) {
    while (true) {
        if (accept_word("null")) {
            column.not_null = false;
        } else if (accept_word("not")) {
            expect_word("null");
            column.not_null = true;
        } else if (accept_word("collate")) {
            take();  // every text column compares as Arabic_CI_AS here
        } else if (accept_word("constraint")) {
            name("a constraint");
        } else if (accept_word("default")) {
            column.default_value = sum();
        } else if (accept_word("primary")) {
            expect_word("key");
            if (!accept_word("clustered")) accept_word("nonclustered");
            column.primary_key = true;
            column.not_null = true;
        } else {
            break;
        }
    }
    static constexpr std::string_view refused[] = {"check", "references", "foreign", "unique", "identity"};
    if (std::any_of(std::begin(refused), std::end(refused),
                    [&](std::string_view word) { return is_word(word); })) {
        fail("'" + peek().text + "' in a table is not available on the embedded engine.");
    }
}

std::vector<std::string> Parser::primary_key() {
    if (accept_word("constraint")) name("a constraint");
    if (!accept_word("primary"))
        fail("'" + peek().text + "' in a table is not available on the embedded engine.");
    expect_word("key");
    std::vector<std::string> columns = key_columns();
    index_options();
    return columns;
}

std::vector<std::string> Parser::key_columns() {
    if (!accept_word("clustered")) accept_word("nonclustered");
    std::vector<std::string> columns;
    expect_symbol("(");
    do {
        columns.push_back(name("a column"));
        if (!accept_word("asc")) accept_word("desc");
    } while (accept_symbol(","));
    expect_symbol(")");
    return columns;
}

// "WITH (PAD_INDEX = OFF, …) ON [PRIMARY]" concerns the server's files and is skipped.
void Parser::index_options() {
    if (accept_word("with")) {
        expect_symbol("(");
        while (!accept_symbol(")")) {
            if (peek().kind == Token::Kind::end) fail_here();
            take();
        }
    }
    if (accept_word("on")) {
        if (!accept_word("primary")) name("a file group");
    }
}

Statement Parser::create_index(bool unique) {
    CreateIndex made;
    made.unique = unique;
    made.index = name("an index");
    expect_word("on");
    made.table = object_name();
    expect_symbol("(");
    do {
        std::string column = name("a column");
        const bool descending = accept_word("desc");
        if (!descending) accept_word("asc");
        made.columns.emplace_back(std::move(column), descending);
    } while (accept_symbol(","));
    expect_symbol(")");
    if (is_word("include")) fail("INCLUDE in an index is not available on the embedded engine.");
    if (accept_word("where")) made.where = expression();
    index_options();
    return made;
}

Statement Parser::create_view() {
    CreateView made;
    made.view = object_name();
    if (is_symbol("(")) fail("Column names of a view belong into its query.");
    expect_word("as");
    const std::size_t begin = peek().begin;
    made.query = query();
    made.text = text_.substr(begin, peek().begin - begin);
    // A view is stored as text, so all its values shape it.
    for (std::size_t slot = 0; slot < tokens_.values.size(); ++slot)
        pinned_.insert(slot);
    return made;
}

Statement Parser::drop() {
    Drop made;
    if (accept_word("table")) {
        made.what = Drop::What::table;
    } else if (accept_word("view")) {
        made.what = Drop::What::view;
    } else if (accept_word("trigger")) {
        made.what = Drop::What::trigger;
    } else if (accept_word("index")) {
        made.what = Drop::What::index;
    } else {
        fail("DROP " + near() + " is not available on the embedded engine.");
    }
    if (is_word("if")) fail("DROP … IF EXISTS is not known to servers before 2016.");
    if (made.what == Drop::What::index) {
        made.name = name("an index");
        if (accept_symbol(".")) {
            made.table = std::move(made.name);
            made.name = name("an index");
        } else {
            expect_word("on");
            made.table = object_name();
        }
    } else {
        made.name = object_name();
    }
    return made;
}

Statement Parser::alter() {
    if (!accept_word("table")) fail("ALTER " + near() + " is not available on the embedded engine.");
    std::string table = object_name();
    if (accept_word("add")) {
        AddColumns made;
        made.table = std::move(table);
        do {
            if (is_word("constraint") || is_word("primary"))
                fail("ADD CONSTRAINT is not available on the embedded engine.");
            made.columns.push_back(column_definition());
        } while (accept_symbol(","));
        return made;
    }
    if (accept_word("alter")) {
        expect_word("column");
        AlterColumn made;
        made.table = std::move(table);
        made.column.name = name("a column");
        made.column.type = data_type();
        column_options(made.column);
        return made;  // a comma after it is an error, as on the server: one column at a time
    }
    if (accept_word("drop")) {
        expect_word("column");
        DropColumn made;
        made.table = std::move(table);
        do {
            made.columns.push_back(name("a column"));
        } while (accept_symbol(","));
        return made;
    }
    fail_here();
}

Statement Parser::setting() {
    if (accept_word("nocount")) {
        if (!accept_word("on")) expect_word("off");
        return Nothing{};
    }
    if (!accept_word("dateformat")) fail("SET " + near() + " is not available on the embedded engine.");
    if (!accept_word("ymd")) fail("SET DATEFORMAT other than ymd is not available on the embedded engine.");
    return Nothing{};
}

}  // namespace database::tsql
