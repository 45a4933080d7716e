// Queries as the server reads them.
#include <algorithm>

#include "common/text.h"
#include "database/embedded/writer.h"
#include "support/strict.h"

namespace test::strict {

namespace {

using Kind = Expression::Kind;

// The type of a column of a query in FROM, as the outer query sees it.
Type written_type(const Typed& typed) {
    Type type;
    type.written = std::string(name_of(typed.rank));
    type.length = typed.length;
    return type;
}

}  // namespace

std::vector<StatementCheck::Head> StatementCheck::query(const Select& select, Place place) {
    if (place != Place::statement && !select.order_by.empty() && !select.top)
        refuse("42000", "The ORDER BY clause is invalid in a query within a query, unless TOP is specified.");
    const bool was_inside = in_aggregate_;
    in_aggregate_ = false;
    std::vector<Head> heads = simple_query(select);
    for (const Select* part = select.next.get(); part != nullptr; part = part->next.get()) {
        const std::vector<Head> others = simple_query(*part);
        for (std::size_t i = 0; i < std::min(heads.size(), others.size()); ++i)
            heads[i].type = meeting({heads[i].type, others[i].type});
    }
    in_aggregate_ = was_inside;
    return heads;
}

std::vector<StatementCheck::Head> StatementCheck::simple_query(const Select& select) {
    Scope scope;
    scope.outer = scope_;
    const Scope* const outer = scope_;
    add_sources(select.from, scope);
    scope_ = &scope;
    std::vector<Head> heads;
    for (const Item& item : select.items) {
        if (item.value->kind != Kind::all) {
            const bool is_column = item.value->kind == Kind::column;
            heads.push_back({!item.alias.empty() ? item.alias
                             : is_column         ? item.value->name
                                                 : std::string(),
                             type_of(*item.value)});
            continue;
        }
        for (const Known& source : scope.sources) {
            if (!item.value->table.empty() && !common::equal_ignoring_case(item.value->table, source.alias))
                continue;
            for (const Column& known : *source.columns)
                heads.push_back({known.name, {rank_of(known.type), known.type.length, nullptr}});
        }
    }
    if (select.where) {
        if (has_aggregate(*select.where)) refuse("42000", "An aggregate may not appear in the WHERE clause.");
        type_of(*select.where);
    }
    check_groups(select);
    if (select.having) type_of(*select.having);
    if (select.distinct) {
        for (const Head& head : heads)
            if (head.type.rank == Rank::large)
                refuse("42000", "The text, ntext and image data types cannot be selected as DISTINCT.");
    }
    check_order(select, heads);
    scope_ = outer;
    return heads;
}

void StatementCheck::add_sources(const std::vector<Source>& sources, Scope& scope) {
    for (const Source& source : sources) {
        if (source.query) {
            auto columns = std::make_unique<std::vector<Column>>();
            for (const Head& head : query(*source.query, Place::source)) {
                const auto is_same = [&](const Column& other) {
                    return common::equal_ignoring_case(other.name, head.name);
                };
                if (std::any_of(columns->begin(), columns->end(), is_same))
                    refuse("42000", "The column '" + head.name + "' was specified more than once for '" +
                                        source.alias + "'.");
                Column column;
                column.name = head.name;
                column.type = written_type(head.type);
                columns->push_back(std::move(column));
            }
            scope.sources.push_back({source.alias, columns.get()});
            made_.push_back(std::move(columns));
        } else if (const Table* table = catalog_.find(source.table)) {
            const Table* real = table->view ? renamed_table(catalog_, *table) : table;
            scope.sources.push_back({source.alias, &(real != nullptr ? real : table)->columns});
        }
        if (!source.on) continue;
        const Scope* const outer = scope_;
        scope_ = &scope;
        if (has_aggregate(*source.on)) refuse("42000", "An aggregate cannot appear in an ON clause.");
        type_of(*source.on);
        scope_ = outer;
    }
}

void StatementCheck::check_groups(const Select& select) {
    for (const auto& group : select.group_by) {
        if (has_aggregate(*group) || group->kind == Kind::select)
            refuse("42000", "An expression of GROUP BY holds an aggregate or a subquery.");
        if (type_of(*group).rank == Rank::large)
            refuse("42000", "The text, ntext and image data types cannot be grouped by.");
    }
}

void StatementCheck::check_order(const Select& select, const std::vector<Head>& heads) {
    const auto is_grouped = [&](const Expression& e) {
        return std::any_of(select.group_by.begin(), select.group_by.end(),
                           [&](const ExpressionPtr& group) { return same(e, *group); });
    };
    const std::function<bool(const Expression&)> is_determined = [&](const Expression& e) {
        if (e.kind == Kind::value || is_aggregate(e) || is_grouped(e)) return true;
        if (e.kind == Kind::column) return false;
        return std::all_of(e.parts.begin(), e.parts.end(),
                           [&](const ExpressionPtr& part) { return is_determined(*part); });
    };
    const bool sums = !select.group_by.empty() || select.having ||
                      std::any_of(select.items.begin(), select.items.end(),
                                  [](const Item& item) { return has_aggregate(*item.value); });
    for (std::size_t i = 0; i < select.order_by.size(); ++i) {
        const Expression& e = *select.order_by[i].value;
        for (std::size_t j = 0; j < i; ++j)
            if (same(e, *select.order_by[j].value))
                refuse("42000", "A column has been specified more than once in the ORDER BY list.");
        if (e.kind == Kind::value) continue;
        const bool in_list =
            (e.kind == Kind::column && e.table.empty() &&
             std::any_of(heads.begin(), heads.end(),
                         [&](const Head& head) { return common::equal_ignoring_case(head.name, e.name); })) ||
            std::any_of(select.items.begin(), select.items.end(), [&](const Item& item) {
                return item.value->kind == Kind::all || same(e, *item.value);
            });
        if (in_list) continue;
        if (select.distinct)
            refuse("42000", "ORDER BY items must appear in the select list if SELECT DISTINCT is specified.");
        if (sums && !is_determined(e))
            refuse("42000", "A column of ORDER BY is neither in an aggregate nor in the GROUP BY clause.");
        if (type_of(e).rank == Rank::large)
            refuse("42000", "The text, ntext and image data types cannot be ordered by.");
    }
}

}  // namespace test::strict
