// Statements that change rows.
#include <algorithm>

#include "common/text.h"
#include "database/embedded/writer.h"
#include "database/error.h"
#include "database/tsql/scanner.h"

namespace database::embedded {

namespace {

using Kind = Expression::Kind;

// Returns true if an expression has the same value for every row.
bool is_constant(const Expression& e) {
    if (e.kind == Kind::column || e.kind == Kind::all || e.query) return false;
    return std::all_of(e.parts.begin(), e.parts.end(),
                       [](const ExpressionPtr& part) { return is_constant(*part); });
}

}  // namespace

const Table* renamed_table(const Catalog& catalog, const Table& view) {
    const Table* at = &view;
    for (int depth = 0; at != nullptr && at->view; ++depth) {
        const Select& q = *at->view->query;
        const bool plain = q.items.size() == 1 && q.items[0].value->kind == Kind::all && q.from.size() == 1 &&
                           !q.from[0].query && !q.where && q.group_by.empty() && !q.having && !q.distinct &&
                           !q.top && !q.next && depth < 20;
        at = plain ? catalog.find(q.from[0].table) : nullptr;
    }
    return at;
}

const Table& Writer::changeable(const std::string& name) {
    const Table& table = catalog_.get(name);
    const Table* real = renamed_table(catalog_, table);
    if (real == nullptr)
        fail("The view '" + name + "' cannot be changed on the embedded engine; change its table.");
    return *real;
}

// The shape says whether a value fits an int, so that it need not be checked at every run.
TypedSql Writer::stored(const Expression& expression, const Type& type) {
    TypedSql what = value(expression);
    if (expression.kind == Kind::value && tsql::fits_int((*values_)[expression.slot])) what.type.bytes = 4;
    return convert(std::move(what), type, Purpose::store);
}

Translation Writer::insert(const Insert& insert) {
    const Table& table = changeable(insert.table);
    std::vector<Type> types;
    std::string names;
    std::vector<int> seen;
    const auto add = [&](int at) {
        const Column& column = table.columns[static_cast<std::size_t>(at)];
        if (std::find(seen.begin(), seen.end(), at) != seen.end()) {
            fail("The column name '" + column.name + "' is specified more than once.");
        }
        seen.push_back(at);
        types.push_back(column.type);
        names += (names.empty() ? "" : ", ") + quoted_name(column.name);
    };
    for (const std::string& name : insert.columns) {
        const int at = table.find(name);
        if (at < 0) throw Error("42S22", "Invalid column name '" + name + "'.", "");
        add(at);
    }
    if (insert.columns.empty()) {
        for (std::size_t at = 0; at < table.columns.size(); ++at)
            add(static_cast<int>(at));
    }
    const std::string head = "INSERT INTO " + quoted_name(table.name);
    Translation made;
    if (!insert.query && insert.rows.empty()) {
        made.sql = head + " DEFAULT VALUES";
        return made;
    }
    made.sql = head + " (" + names + ")";
    const auto expect_count = [&](std::size_t count) {
        if (count == types.size()) return;
        throw Error("21S01", "The number of values does not match the number of columns.", "");
    };
    if (insert.query) {
        std::vector<Column> columns;
        made.sql += " " + query(*insert.query, columns, &types);
        expect_count(columns.size());
        return made;
    }
    made.sql += " VALUES ";
    for (std::size_t r = 0; r < insert.rows.size(); ++r) {
        const auto& row = insert.rows[r];
        expect_count(row.size());
        made.sql += r == 0 ? "(" : ", (";
        for (std::size_t i = 0; i < row.size(); ++i) {
            made.sql += (i == 0 ? "" : ", ") + stored(*row[i], types[i]).sql;
        }
        made.sql += ")";
    }
    return made;
}

// The table to change and its alias: in "delete t from a join b" t is one of the sources.
Writer::Target Writer::target(const std::string& name, const std::vector<Source>& from) {
    for (const Source& each : from) {
        if (!each.query && common::equal_ignoring_case(each.alias, name))
            return {&changeable(each.table), each.alias};
    }
    for (const Source& each : from) {
        if (!each.query && common::equal_ignoring_case(each.table, name))
            return {&changeable(each.table), each.alias};
    }
    const Table& table = changeable(name);
    if (!from.empty()) fail("'" + name + "' is not among the tables after FROM.");
    return {&table, catalog_.get(name).name};
}

std::string Writer::where_of(const Target& target, const std::vector<Source>& from, const Expression* where,
                             const Expression* top, const std::string& more) {
    if (from.empty() && top == nullptr) {
        std::string sql = where != nullptr ? condition(*where) : std::string();
        if (!more.empty()) sql += (sql.empty() ? "" : " AND ") + more;
        return sql.empty() ? sql : " WHERE " + sql;
    }
    Scope scope;
    Scope* const outer = scope_;
    scope.outer = outer;
    scope_ = &scope;
    std::string sql;
    if (from.empty()) {
        scope.sources.push_back({target.alias, target.table, {}});
        sql = quoted_name(target.table->name) + " AS " + quoted_name(target.alias);
    } else {
        sql = source_list(from, scope);
    }
    sql = " WHERE rowid IN (SELECT " + quoted_name(target.alias) + ".rowid FROM " + sql;
    if (where != nullptr) sql += " WHERE " + condition(*where);
    if (top != nullptr) sql += limit(*top);
    scope_ = outer;
    return sql + ")";
}

Translation Writer::update(const Update& update) {
    const Target to = target(update.table, update.from);
    Scope scope;
    scope.sources.push_back({to.alias, to.table, {}});
    Scope joined;
    std::string from;
    if (update.from.empty()) {
        scope_ = &scope;
    } else {
        scope_ = &joined;
        from = source_list(update.from, joined);
    }
    std::string names, values, sets, changes;
    bool constant = true;
    std::vector<int> seen;
    for (const auto& [name, expression] : update.sets) {
        const int at = to.table->find(name);
        if (at < 0) throw Error("42S22", "Invalid column name '" + name + "'.", "");
        if (std::find(seen.begin(), seen.end(), at) != seen.end()) {
            fail("The column name '" + name + "' is specified more than once in the SET clause.");
        }
        seen.push_back(at);
        const Column& column = to.table->columns[static_cast<std::size_t>(at)];
        const std::string quoted = quoted_name(column.name);
        const std::string what = stored(*expression, column.type).sql;
        names += (names.empty() ? "" : ", ") + quoted;
        values += (values.empty() ? "" : ", ") + what;
        sets += (sets.empty() ? "" : ", ") + quoted + " = " + what;
        constant = constant && is_constant(*expression);
        // Rows that hold the value already are left alone. In this form an index on the column finds the
        // others.
        changes += changes.empty() ? "(" : " OR ";
        const bool is_value = expression->kind == Kind::value && what != "NULL";
        if (is_value && !column.type.is_text()) {
            changes += quoted + " < " + what + " OR " + quoted + " > " + what + " OR " + quoted + " IS NULL";
        } else {
            // Texts are compared byte by byte, because the collation ignores case and trailing blanks.
            changes += "(" + quoted + " COLLATE BINARY) IS NOT " + what;
        }
    }
    const bool all_rows = constant && update.from.empty() && !update.where && !update.top;
    Translation made;
    if (update.from.empty()) {
        made.sql = "UPDATE " + quoted_name(to.table->name) + " AS " + quoted_name(to.alias) + " SET " + sets;
    } else {
        // The values come from the joined row of the same number.
        std::string inner = "SELECT " + values + " FROM " + from + " WHERE " + quoted_name(to.alias) +
                            ".rowid = " + quoted_name(to.table->name + " ") + ".rowid";
        if (update.where) inner += " AND " + condition(*update.where);
        made.sql = "UPDATE " + quoted_name(to.table->name) + " AS " + quoted_name(to.table->name + " ") +
                   " SET (" + names + ") = (" + inner + " LIMIT 1)";
    }
    made.sql +=
        where_of(to, update.from, update.where.get(), update.top.get(), all_rows ? changes + ")" : "");
    scope_ = nullptr;
    return made;
}

Translation Writer::remove(const Delete& remove) {
    const Target from = target(remove.table, remove.from);
    Scope scope;
    scope.sources.push_back({from.alias, from.table, {}});
    if (remove.from.empty()) scope_ = &scope;
    Translation made;
    made.sql = "DELETE FROM " + quoted_name(from.table->name) + " AS " + quoted_name(from.alias) +
               where_of(from, remove.from, remove.where.get(), remove.top.get(), "");
    scope_ = nullptr;
    return made;
}

std::string Writer::column_default(const Expression& expression, const Type& type) {
    return stored(expression, type).sql;
}

std::string Writer::table_condition(const Table& table, const Expression& expression) {
    Scope scope;
    scope.sources.push_back({table.name, &table, {}});
    scope_ = &scope;
    std::string sql = condition(expression);
    scope_ = nullptr;
    // The condition of an index has column names without their table.
    const std::string prefix = quoted_name(table.name) + ".";
    for (auto at = sql.find(prefix); at != std::string::npos; at = sql.find(prefix, at))
        sql.erase(at, prefix.size());
    return sql;
}

}  // namespace database::embedded
