// Queries and the statements that change rows.
#include "database/error.h"
#include "database/tsql/parser.h"

namespace database::tsql {

std::unique_ptr<Select> Parser::query() {
    if (++depth_ > 120) fail("The statement is nested too deeply.");
    auto first = simple_query();
    Select* last = first.get();
    while (is_word("union") || is_word("except") || is_word("intersect")) {
        last->compound = take().lower;
        if (last->compound == "union" && accept_word("all")) last->compound = "union all";
        last->next = simple_query();
        last = last->next.get();
    }
    if (accept_word("order")) {
        expect_word("by");
        do {
            Order order;
            if (peek().kind == Token::Kind::value) {
                pinned_.insert(peek().slot);  // a column's number, unlike any other value
            }
            order.value = expression();
            if (accept_word("desc")) {
                order.descending = true;
            } else {
                accept_word("asc");
            }
            first->order_by.push_back(std::move(order));
        } while (accept_symbol(","));
    }
    if (is_word("for") || is_word("option") || is_word("compute")) fail_here();
    --depth_;
    return first;
}

std::unique_ptr<Select> Parser::simple_query() {
    if (accept_symbol("(")) {
        auto inner = query();
        expect_symbol(")");
        return inner;
    }
    expect_word("select");
    auto made = std::make_unique<Select>();
    if (accept_word("distinct")) {
        made->distinct = true;
    } else {
        accept_word("all");
    }
    made->top = top();
    select_items(*made);
    if (accept_word("into")) made->into = object_name();
    if (accept_word("from")) made->from = sources();
    if (accept_word("where")) made->where = expression();
    if (accept_word("group")) {
        expect_word("by");
        do {
            made->group_by.push_back(expression());
        } while (accept_symbol(","));
    }
    if (accept_word("having")) made->having = expression();
    return made;
}

ExpressionPtr Parser::top() {
    if (!accept_word("top")) return nullptr;
    ExpressionPtr count;
    if (accept_symbol("(")) {
        count = expression();
        expect_symbol(")");
    } else {
        if (peek().kind != Token::Kind::value) fail_here();
        count = primary();
    }
    if (is_word("percent")) fail("TOP … PERCENT is not available on the embedded engine.");
    if (is_word("with")) fail("TOP … WITH TIES is not available on the embedded engine.");
    return count;
}

void Parser::select_items(Select& select) {
    do {
        Item item;
        if (is_symbol("*")) {
            take();
            item.value = std::make_unique<Expression>();
            item.value->kind = Expression::Kind::all;
        } else {
            item.value = expression();
            if (item.value->kind != Expression::Kind::all) item.alias = alias();
        }
        select.items.push_back(std::move(item));
    } while (accept_symbol(","));
}

std::string Parser::alias() {
    if (accept_word("as")) {
        if (peek().kind == Token::Kind::value) {
            const auto* text = std::get_if<std::string>(&tokens_.values[peek().slot]);
            if (text == nullptr) fail_here();
            pinned_.insert(peek().slot);
            take();
            return *text;
        }
        return name("an alias");
    }
    return is_name() ? name("an alias") : std::string();
}

std::vector<Source> Parser::sources() {
    std::vector<Source> list;
    list.push_back(source());
    while (true) {
        Source next;
        std::string join;
        if (accept_symbol(",")) {
            join = ",";
        } else if (is_word("join") || is_word("inner")) {
            accept_word("inner");
            join = "INNER JOIN";
        } else if (is_word("left") || is_word("right") || is_word("full")) {
            join = take().lower;
            accept_word("outer");
            join = join == "left" ? "LEFT JOIN" : join == "right" ? "RIGHT JOIN" : "FULL JOIN";
        } else if (accept_word("cross")) {
            join = "CROSS JOIN";
        } else {
            return list;
        }
        if (join != ",") expect_word("join");
        next = source();
        next.join = join;
        if (join != "," && join != "CROSS JOIN") {
            expect_word("on");
            next.on = expression();
        }
        list.push_back(std::move(next));
    }
}

Source Parser::source() {
    Source made;
    if (accept_symbol("(")) {
        if (!is_word("select")) fail("Joins in parentheses are not available on the embedded engine.");
        made.query = query();
        expect_symbol(")");
        made.alias = alias();
        if (made.alias.empty()) fail("A query in parentheses needs a name, near " + near() + ".");
        return made;
    }
    made.table = object_name();
    made.alias = alias();
    if (made.alias.empty()) made.alias = made.table;
    if (is_word("with")) fail("WITH (hints) is not available on the embedded engine.");
    return made;
}

Statement Parser::insert() {
    accept_word("into");
    Insert made;
    made.table = object_name();
    if (is_symbol("(") && !is_word("select", 1)) made.columns = name_list();
    if (accept_word("default")) {
        expect_word("values");
        return made;
    }
    if (accept_word("values")) {
        do {
            expect_symbol("(");
            std::vector<ExpressionPtr> row;
            do {
                row.push_back(expression());
            } while (accept_symbol(","));
            expect_symbol(")");
            made.rows.push_back(std::move(row));
        } while (accept_symbol(","));
        return made;
    }
    if (!is_word("select") && !is_symbol("(")) fail_here();
    made.query = query();
    return made;
}

Statement Parser::update() {
    Update made;
    if (is_word("top") && !is_symbol("(", 1)) fail("TOP of a change takes its number in parentheses.");
    made.top = top();
    made.table = object_name();
    expect_word("set");
    do {
        std::string column = name("a column");
        if (accept_symbol(".")) column = name("a column");
        expect_symbol("=");
        if (is_word("default")) fail("SET … = DEFAULT is not available on the embedded engine.");
        made.sets.emplace_back(std::move(column), expression());
    } while (accept_symbol(","));
    if (accept_word("from")) made.from = sources();
    if (accept_word("where")) made.where = expression();
    return made;
}

Statement Parser::remove() {
    Delete made;
    if (is_word("top") && !is_symbol("(", 1)) fail("TOP of a change takes its number in parentheses.");
    made.top = top();
    accept_word("from");
    made.table = object_name();
    if (accept_word("from")) made.from = sources();
    // "a right join b" has the rows of "b left join a"; only the order of their columns differs, which a
    // deletion does not show. The engine is twice as fast with the latter.
    if (made.from.size() == 2 && made.from[1].join == "RIGHT JOIN") {
        std::swap(made.from[0], made.from[1]);
        std::swap(made.from[0].on, made.from[1].on);
        made.from[0].join.clear();
        made.from[1].join = "LEFT JOIN";
    }
    if (accept_word("where")) made.where = expression();
    return made;
}

}  // namespace database::tsql
