// Queries: their sources, columns, groups and order.
#include <algorithm>

#include "common/text.h"
#include "database/embedded/collation.h"
#include "database/embedded/writer.h"
#include "database/error.h"

namespace database::embedded {

namespace {

using Kind = Expression::Kind;

bool has_aggregate(const Expression& e) {
    if (is_aggregate(e)) return true;
    return std::any_of(e.parts.begin(), e.parts.end(),
                       [](const ExpressionPtr& part) { return has_aggregate(*part); });
}

}  // namespace

// Makes the names of a query's sources known while the query is being written.
class Writer::ScopeGuard {
  public:
    ScopeGuard(Writer& writer, Scope& scope) : writer_(writer) {
        scope.outer = writer.scope_;
        writer.scope_ = &scope;
    }
    ~ScopeGuard() { writer_.scope_ = writer_.scope_->outer; }
    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;

  private:
    Writer& writer_;
};

Translation Writer::select(const Select& select) {
    if (!select.into.empty()) fail("SELECT … INTO is not available on the embedded engine.");
    Translation made;
    made.sql = query(select, made.columns, nullptr);
    return made;
}

TypedSql Writer::column(const Expression& e) {
    for (const Scope* scope = scope_; scope != nullptr; scope = scope->outer) {
        const ScopeSource* found_source = nullptr;
        int found = -1;
        for (const ScopeSource& source : scope->sources) {
            if (!e.table.empty() && !common::equal_ignoring_case(source.alias, e.table)) continue;
            const auto& columns = source.all();
            for (std::size_t i = 0; i < columns.size(); ++i) {
                if (!common::equal_ignoring_case(columns[i].name, e.name)) continue;
                if (found_source != nullptr) fail("Ambiguous column name '" + e.name + "'.");
                found_source = &source;
                found = static_cast<int>(i);
                break;
            }
            if (found_source == nullptr && e.name == "$rowid" && source.table != nullptr) {
                return {quoted_name(source.alias) + ".rowid", of_kind(Type::Kind::integer), true, false};
            }
            if (found_source == nullptr && !e.table.empty()) {
                throw Error("42S22", "Invalid column name '" + e.name + "'.", "");
            }
        }
        if (found_source != nullptr) {
            const Column& column = found_source->all()[static_cast<std::size_t>(found)];
            return {quoted_name(found_source->alias) + "." + quoted_name(column.name), column.type, true,
                    false};
        }
    }
    if (!e.table.empty()) {
        throw Error("42S22",
                    "The multi-part identifier \"" + e.table + "." + e.name + "\" could not be bound.", "");
    }
    throw Error("42S22", "Invalid column name '" + e.name + "'.", "");
}

std::string Writer::source(const Source& source, Scope& scope) {
    for (const ScopeSource& other : scope.sources) {
        if (common::equal_ignoring_case(other.alias, source.alias)) {
            fail("The name '" + source.alias +
                 "' stands for two tables of the query; give one of them another.");
        }
    }
    const std::string alias = " AS " + quoted_name(source.alias);
    ScopeSource made;
    made.alias = source.alias;
    std::string sql;
    if (source.query) {
        Scope* const current = scope_;
        scope_ = scope.outer;
        sql = "(" + query(*source.query, made.columns, nullptr) + ")" + alias;
        scope_ = current;
        for (const Column& column : made.columns) {
            if (column.name.empty()) fail("A column of the query '" + source.alias + "' has no name.");
        }
    } else {
        const Table& table = catalog_.get(source.table);
        const Table* real = table.view ? renamed_table(catalog_, table) : &table;
        if (real != nullptr) {
            made.table = real;
            sql = quoted_name(real->name) + alias;
        } else {
            if (!table.view) fail("The view '" + table.name + "' was not made by this program.");
            // A view is expanded where it is used, with its values as literals.
            if (++depth_ > 100) fail("The views are nested too deeply.");
            const auto* const values = values_;
            Scope* const current = scope_;
            const bool was_inline = inline_values_;
            values_ = &table.view->tokens.values;
            inline_values_ = true;
            scope_ = nullptr;
            sql = "(" + query(*table.view->query, made.columns, nullptr) + ")" + alias;
            values_ = values;
            inline_values_ = was_inline;
            scope_ = current;
            --depth_;
        }
    }
    scope.sources.push_back(std::move(made));
    return sql;
}

std::string Writer::source_list(const std::vector<Source>& sources, Scope& scope) {
    std::string sql;
    for (const Source& each : sources) {
        if (!each.join.empty()) sql += each.join == "," ? ", " : " " + each.join + " ";
        sql += source(each, scope);
        if (each.on) sql += " ON " + condition(*each.on);
    }
    return sql;
}

std::string Writer::query(const Select& select, std::vector<Column>& columns,
                          const std::vector<Type>* targets) {
    if (++depth_ > 100) fail("The statement is nested too deeply.");
    std::string sql;
    if (!select.next) {
        sql = simple_query(select, columns, targets, &select.order_by);
    } else {
        const Select* part = &select;
        std::vector<Column> others;
        for (; part != nullptr; part = part->next.get()) {
            others.clear();
            std::string one = simple_query(*part, part == &select ? columns : others, targets, nullptr);
            if (part != &select && others.size() != columns.size()) {
                fail(
                    "All queries combined by UNION, INTERSECT or EXCEPT must have the same number of "
                    "columns.");
            }
            for (std::size_t i = 0; i < others.size(); ++i) {
                if (columns[i].type.kind < others[i].type.kind)
                    columns[i].type = of_kind(others[i].type.kind);
            }
            sql += part->top ? "SELECT * FROM (" + one + ")" : one;
            if (part->next) {
                std::string word = part->compound;
                std::transform(word.begin(), word.end(), word.begin(),
                               [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
                sql += " " + word + " ";
            }
        }
        Scope none;
        const ScopeGuard guard(*this, none);
        sql += ordering(select.order_by, select, columns);
    }
    --depth_;
    return sql;
}

std::string Writer::simple_query(const Select& select, std::vector<Column>& columns,
                                 const std::vector<Type>* targets, const std::vector<Order>* order_by) {
    Scope scope;
    const ScopeGuard guard(*this, scope);
    const std::string from = source_list(select.from, scope);
    std::string sql = select.distinct ? "SELECT DISTINCT " : "SELECT ";
    sql += items(select, columns, targets);
    if (!from.empty()) sql += " FROM " + from;
    std::string where = select.where ? condition(*select.where) : std::string();
    const std::string groups = grouping(select, columns, where);
    if (!where.empty()) sql += " WHERE " + where;
    sql += groups;
    if (order_by != nullptr) sql += ordering(*order_by, select, columns);
    if (select.top) sql += limit(*select.top);
    return sql;
}

std::string Writer::items(const Select& select, std::vector<Column>& columns,
                          const std::vector<Type>* targets) {
    std::string sql;
    const auto add = [&](TypedSql what, const std::string& name) {
        if (targets != nullptr) {
            if (columns.size() >= targets->size()) {
                throw Error("21S01", "There are more values than columns.", "");
            }
            what = convert(std::move(what), (*targets)[columns.size()], Purpose::store);
        } else {
            what.sql = collated(what);
        }
        sql += (columns.empty() ? "" : ", ") + what.sql + " AS " + quoted_name(name.empty() ? " " : name);
        Column column;
        column.name = name;
        column.type = std::move(what.type);
        columns.push_back(std::move(column));
    };
    for (const Item& item : select.items) {
        if (item.value->kind != Kind::all) {
            const bool column = item.value->kind == Kind::column;
            add(value(*item.value), !item.alias.empty() ? item.alias
                                    : column            ? item.value->name
                                                        : std::string());
            continue;
        }
        bool found = false;
        for (const ScopeSource& source : scope_->sources) {
            if (!item.value->table.empty() && !common::equal_ignoring_case(item.value->table, source.alias))
                continue;
            found = true;
            for (const Column& column : source.all()) {
                add({quoted_name(source.alias) + "." + quoted_name(column.name), column.type, true, false},
                    column.name);
            }
        }
        if (!found)
            fail("There is no table '" + item.value->table + "' in the query to take all columns of.");
    }
    return sql;
}

std::string Writer::grouping(const Select& select, const std::vector<Column>&, std::string& where) {
    std::string sql;
    std::set<std::string> groups;
    const std::set<std::string> decided = decided_by_key(select);
    for (const auto& each : select.group_by) {
        if (each->kind == Kind::value) fail("GROUP BY takes columns, not values.");
        const TypedSql what = value(*each);
        groups.insert(what.sql);
        if (decided.contains(what.sql)) continue;
        sql += (sql.empty() ? " GROUP BY " : ", ") + collated(what);
    }
    bool grouped = !select.group_by.empty() || select.having;
    for (const Item& item : select.items)
        grouped = grouped || has_aggregate(*item.value);
    if (!grouped) return sql;
    for (const Item& item : select.items)
        check_grouped(*item.value, groups);
    if (!select.having) return sql;
    check_grouped(*select.having, groups);
    // Conditions without sums are applied before the rows are grouped.
    std::vector<const Expression*> open{select.having.get()}, early;
    std::string having;
    while (!open.empty()) {
        const Expression* e = open.back();
        open.pop_back();
        if (e->kind == Kind::binary && e->name == "and") {
            open.push_back(e->parts[1].get());
            open.push_back(e->parts[0].get());
            continue;
        }
        if (!select.group_by.empty() && !has_aggregate(*e) && e->kind != Kind::exists)
            early.push_back(e);
        else
            having += (having.empty() ? "" : " AND ") + condition(*e);
    }
    if (!early.empty()) where += (where.empty() ? "" : " AND ") + conjunction(early);
    if (!having.empty()) sql += " HAVING " + having;
    return sql;
}

// Columns that need not be in GROUP BY because the groups begin with their table's key. Sorting the rows of a
// search by twenty columns takes longer than reading them.
std::set<std::string> Writer::decided_by_key(const Select& select) {
    std::set<std::string> decided;
    for (const ScopeSource& source : scope_->sources) {
        const std::size_t size = source.table == nullptr ? 0 : source.table->key.size();
        if (size == 0 || select.group_by.size() < size) continue;
        std::set<std::string> key, first;
        for (std::size_t i = 0; i < size; ++i) {
            key.insert(quoted_name(source.alias) + "." + quoted_name(source.table->key[i]));
            if (select.group_by[i]->kind == Kind::column) first.insert(value(*select.group_by[i]).sql);
        }
        if (first != key) continue;
        for (const Column& column : source.table->columns) {
            std::string name = quoted_name(source.alias) + "." + quoted_name(column.name);
            if (!key.contains(name)) decided.insert(std::move(name));
        }
    }
    return decided;
}

// As on the server, a column that is neither grouped by nor in an aggregate is an error.
void Writer::check_grouped(const Expression& e, const std::set<std::string>& groups) {
    if (e.kind == Kind::value || is_aggregate(e)) return;
    if (e.kind == Kind::all) {
        for (const ScopeSource& source : scope_->sources) {
            if (!e.table.empty() && !common::equal_ignoring_case(e.table, source.alias)) continue;
            for (const Column& column : source.all()) {
                const std::string name = quoted_name(source.alias) + "." + quoted_name(column.name);
                if (!groups.contains(name)) {
                    fail("Column '" + column.name + "' is neither in an aggregate function nor in GROUP BY.");
                }
            }
        }
        return;
    }
    const bool names_part = e.kind == Kind::function && (e.name.starts_with("date"));
    if (e.kind != Kind::select && e.kind != Kind::exists && groups.contains(write(e).sql)) return;
    if (e.kind == Kind::column)
        fail("Column '" + e.name + "' is neither in an aggregate function nor in GROUP BY.");
    for (std::size_t i = names_part ? 1 : 0; i < e.parts.size(); ++i)
        check_grouped(*e.parts[i], groups);
}

std::string Writer::ordering(const std::vector<Order>& order_by, const Select& select,
                             const std::vector<Column>& columns) {
    std::string sql;
    for (const Order& order : order_by) {
        const Expression& e = *order.value;
        TypedSql what;
        const auto of_name = [&](const Column& column) {
            return common::equal_ignoring_case(column.name, e.name);
        };
        const auto named = e.kind == Kind::column && e.table.empty()
                               ? std::count_if(columns.begin(), columns.end(), of_name)
                               : 0;
        if (e.kind == Kind::value) {
            const auto* number = std::get_if<std::int64_t>(&(*values_)[e.slot]);
            if (number == nullptr || *number < 1 || *number > static_cast<std::int64_t>(columns.size())) {
                fail("ORDER BY takes the number of a column of the result.");
            }
            const Column& column = columns[static_cast<std::size_t>(*number - 1)];
            what = {std::to_string(*number), column.type, true, false};
            if (column.type.is_text()) what.sql += std::string(" COLLATE ") + collation_name;
        } else if (named == 1 || select.next) {
            // A column of the result takes precedence over a column of a table.
            const auto found = std::find_if(columns.begin(), columns.end(), of_name);
            if (named == 0) throw Error("42S22", "Invalid column name '" + e.name + "'.", "");
            what = {quoted_name(found->name), found->type, true, false};
            if (found->type.is_text()) what.sql += std::string(" COLLATE ") + collation_name;
        } else {
            what = value(e);
            what.sql = collated(what);
        }
        sql += (sql.empty() ? " ORDER BY " : ", ") + what.sql + (order.descending ? " DESC" : "");
    }
    return sql;
}

std::string Writer::limit(const Expression& top) {
    const TypedSql count = value(top);
    if (!count.type.is_whole()) fail("TOP takes a whole number.");
    return " LIMIT max(0, " + count.sql + ")";
}

}  // namespace database::embedded
