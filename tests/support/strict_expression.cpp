// Types and expressions as the server types them.
#include <algorithm>

#include "common/text.h"
#include "database/embedded/functions.h"
#include "database/embedded/moments.h"
#include "database/embedded/writer.h"
#include "database/error.h"
#include "support/strict.h"

namespace test::strict {

namespace {

struct Named {
    std::string_view name;
    Rank rank;
};
constexpr Named names[] = {
    {"bit", Rank::bit},
    {"tinyint", Rank::tinyint},
    {"smallint", Rank::smallint},
    {"int", Rank::integer},
    {"integer", Rank::integer},
    {"bigint", Rank::bigint},
    {"money", Rank::money},
    {"smallmoney", Rank::money},
    {"numeric", Rank::numeric},
    {"decimal", Rank::numeric},
    {"real", Rank::real},
    {"float", Rank::floating},
    {"smalldatetime", Rank::date},
    {"date", Rank::date},
    {"datetime", Rank::datetime},
    {"datetime2", Rank::datetime},
    {"varchar", Rank::text},
    {"nvarchar", Rank::text},
    {"char", Rank::text},
    {"nchar", Rank::text},
    {"sysname", Rank::text},
    {"text", Rank::large},
    {"ntext", Rank::large},
    {"image", Rank::large},
    {"the type of a null", Rank::null},
};

bool is_whole_text(std::string_view text) {
    text = common::trim(text);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool is_readable(std::string_view text, Rank as) {
    if (as == Rank::bit) {
        const std::string_view word = common::trim(text);
        if (common::equal_ignoring_case(word, "true") || common::equal_ignoring_case(word, "false"))
            return true;
    }
    if (as >= Rank::bit && as <= Rank::bigint) return is_whole_text(text);
    if (as == Rank::numeric) {
        return !common::trim(text).empty() && text.find_first_of("eE") == text.npos &&
               database::embedded::parse_server_number(text).has_value();
    }
    if (as == Rank::real || as == Rank::floating)
        return database::embedded::parse_server_number(text).has_value();
    if (as == Rank::date || as == Rank::datetime) return database::embedded::parse_ticks(text).has_value();
    return true;
}

}  // namespace

void refuse(std::string_view sqlstate, const std::string& why) {
    throw database::Error(std::string(sqlstate), "A server refuses this: " + why, "");
}

Rank rank_of(const Type& type) {
    const std::string word = common::lower_ascii(type.written.substr(0, type.written.find('(')));
    const auto* found = std::find_if(std::begin(names), std::end(names),
                                     [&](const Named& n) { return n.name == common::trim(word); });
    return found == std::end(names) ? Rank::unknown : found->rank;
}

std::string_view name_of(Rank rank) {
    const auto* found =
        std::find_if(std::begin(names), std::end(names), [&](const Named& n) { return n.rank == rank; });
    return found == std::end(names) ? "an unknown type" : found->name;
}

void check_converts(const Typed& text, Rank to) {
    if (text.literal == nullptr || is_readable(*text.literal, to)) return;
    refuse(to >= Rank::date ? "22007" : "22018", "Conversion failed when converting the value '" +
                                                     *text.literal + "' to data type " +
                                                     std::string(name_of(to)) + ".");
}

namespace {

using Kind = Expression::Kind;

// Functions whose first argument must be a text; numbers are not converted.
constexpr std::string_view of_texts[] = {"substring", "stuff"};

Typed of(Rank rank) {
    Typed made;
    made.rank = rank;
    return made;
}

template <std::size_t N>
bool is_one_of(const std::string& name, const std::string_view (&list)[N]) {
    return std::find(std::begin(list), std::end(list), name) != std::end(list);
}

bool is_comparison(const std::string& op) {
    return op == "=" || op == "<>" || op == "<" || op == ">" || op == "<=" || op == ">=";
}

}  // namespace

bool has_aggregate(const Expression& e) {
    return is_aggregate(e) || std::any_of(e.parts.begin(), e.parts.end(),
                                          [](const ExpressionPtr& part) { return has_aggregate(*part); });
}

Typed StatementCheck::value(std::size_t slot) const {
    const Value& value = values_[slot];
    Typed typed;
    if (is_null(value)) typed.rank = Rank::null;
    if (std::holds_alternative<common::Moment>(value)) typed.rank = Rank::datetime;
    const bool is_mark = marks_.contains(slot);
    if (std::holds_alternative<double>(value)) typed.rank = is_mark ? Rank::floating : Rank::numeric;
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        typed.rank = is_mark                                         ? Rank::bigint
                     : *whole > 2147483647 || *whole < -2147483648LL ? Rank::numeric
                                                                     : Rank::integer;
    if (const auto* text = std::get_if<std::string>(&value)) {
        typed.rank = Rank::text;
        typed.length = static_cast<int>(std::max<std::size_t>(common::column_width(*text), 1));
        typed.literal = text;
    }
    return typed;
}

Typed StatementCheck::column(const Expression& e) const {
    for (const Scope* scope = scope_; scope != nullptr; scope = scope->outer) {
        for (const Known& source : scope->sources) {
            if (!e.table.empty() && !common::equal_ignoring_case(source.alias, e.table)) continue;
            for (const Column& known : *source.columns) {
                if (!common::equal_ignoring_case(known.name, e.name)) continue;
                return {rank_of(known.type), known.type.length, nullptr};
            }
        }
    }
    return {};
}

Typed StatementCheck::meeting(const std::vector<Typed>& parts) {
    Typed met;
    for (const Typed& part : parts) {
        if (part.rank == Rank::unknown) return {};
        if (met.rank < part.rank) met.rank = part.rank;
        met.length = std::max(met.length, part.length);
    }
    for (const Typed& part : parts) {
        if (part.is_text() && !met.is_text()) check_converts(part, met.rank);
    }
    return met;
}

void StatementCheck::compare(const Typed& left, const Typed& right) {
    if (left.rank == Rank::large || right.rank == Rank::large) {
        refuse("42000",
               "The data types text, ntext and image cannot be compared, only with LIKE or IS NULL.");
    }
    meeting({left, right});
}

Typed StatementCheck::type_of(const Expression& e) {
    // The engine itself refuses deeper nesting.
    constexpr int deepest = 500;
    if (depth_ >= deepest) return {};
    ++depth_;
    const Typed typed = type_within(e);
    --depth_;
    return typed;
}

Typed StatementCheck::type_within(const Expression& e) {
    switch (e.kind) {
        case Kind::value:
            return value(e.slot);
        case Kind::null:
            return of(Rank::null);
        case Kind::column:
            return column(e);
        case Kind::all:
            return {};
        case Kind::unary: {
            const Typed operand = type_of(*e.parts[0]);
            if (e.name != "not" && operand.is_text())
                refuse("42000", "Operand data type nvarchar is invalid for the operator '" + e.name + "'.");
            return operand;
        }
        case Kind::binary:
            return binary(e);
        case Kind::function:
            return is_aggregate(e) ? aggregate(e) : function(e);
        case Kind::convert: {
            const Typed what = type_of(*e.parts[0]);
            const Rank to = rank_of(e.type);
            if (e.parts.size() == 1) check_converts(what, to);
            return {to, e.type.length, nullptr};
        }
        case Kind::branch:
            return branch(e);
        case Kind::in_list:
        case Kind::between: {
            std::vector<Typed> parts;
            for (const auto& part : e.parts)
                parts.push_back(type_of(*part));
            for (std::size_t i = 1; i < parts.size(); ++i)
                compare(parts[0], parts[i]);
            if (e.kind == Kind::in_list) meeting(parts);
            return of(Rank::bit);
        }
        case Kind::in_select: {
            const Typed what = type_of(*e.parts[0]);
            const auto heads = query(*e.query, Place::value);
            if (heads.size() == 1) compare(what, heads[0].type);
            return of(Rank::bit);
        }
        case Kind::like:
        case Kind::is_null:
            for (const auto& part : e.parts)
                type_of(*part);
            return of(Rank::bit);
        case Kind::exists:
            query(*e.query, Place::value);
            return of(Rank::bit);
        case Kind::select:
            return value_of_query(e);
    }
    return {};
}

Typed StatementCheck::branch(const Expression& e) {
    std::vector<Typed> results;
    const std::size_t end = e.parts.size() - (e.has_else ? 1 : 0);
    for (std::size_t at = e.has_operand ? 1 : 0; at + 1 < end; at += 2) {
        const Typed when = type_of(*e.parts[at]);
        if (e.has_operand) compare(type_of(*e.parts[0]), when);
        results.push_back(type_of(*e.parts[at + 1]));
    }
    if (e.has_else) results.push_back(type_of(*e.parts.back()));
    const Typed met = meeting(results);
    if (met.rank == Rank::null)
        refuse("42000", "At least one of the results of CASE must be other than NULL.");
    return met;
}

// More rows than one are an error of the server, so only a query that can have no more is accepted.
Typed StatementCheck::value_of_query(const Expression& e) {
    if (in_aggregate_)
        refuse("42000", "Cannot perform an aggregate function on an expression with a subquery.");
    const Select& q = *e.query;
    const bool is_sum =
        q.group_by.empty() && std::any_of(q.items.begin(), q.items.end(),
                                          [](const Item& item) { return has_aggregate(*item.value); });
    if (!is_sum && !q.top && !q.from.empty())
        refuse("21000", "A query that stands for a value may return more than one row.");
    const auto heads = query(q, Place::value);
    return heads.size() == 1 ? heads[0].type : Typed{};
}

Typed StatementCheck::binary(const Expression& e) {
    if (e.name == "and" || e.name == "or") {
        const Expression* at = &e;
        for (; at->kind == Kind::binary && at->name == e.name; at = at->parts[0].get())
            type_of(*at->parts[1]);
        type_of(*at);
        return of(Rank::bit);
    }
    Typed left = type_of(*e.parts[0]);
    Typed right = type_of(*e.parts[1]);
    if (is_comparison(e.name)) {
        compare(left, right);
        return of(Rank::bit);
    }
    return arithmetic(e.name, left, right);
}

Typed StatementCheck::arithmetic(const std::string& op, const Typed& left, const Typed& right) {
    if (left.rank == Rank::unknown || right.rank == Rank::unknown) return {};
    if (op == "+" && left.is_text() && right.is_text())
        return {Rank::text, left.length + right.length, nullptr};
    const bool invalid = left.rank == Rank::large || right.rank == Rank::large ||
                         (left.rank == Rank::bit && right.rank == Rank::bit);
    const bool broken = left.rank == Rank::real || left.rank == Rank::floating || right.rank == Rank::real ||
                        right.rank == Rank::floating;
    if (invalid || (op == "%" && broken))
        refuse("42000", "The operands' data types are invalid for the operator '" + op + "'.");
    return of(meeting({left, right}).rank);
}

Typed StatementCheck::aggregate(const Expression& e) {
    if (in_aggregate_)
        refuse("42000", "Cannot perform an aggregate function on an expression containing an aggregate.");
    in_aggregate_ = true;
    const Typed what = type_of(*e.parts[0]);
    in_aggregate_ = false;
    if (e.name == "count") return of(Rank::integer);
    if (what.rank == Rank::bit || what.rank == Rank::large)
        refuse("42000", "Operand data type " + std::string(name_of(what.rank)) + " is invalid for " + e.name +
                            " operator.");
    if (e.name == "max" || e.name == "min") return {what.rank, what.length, nullptr};
    if (what.rank == Rank::real) return of(Rank::floating);
    return of(what.is_whole() ? std::max(what.rank, Rank::integer) : what.rank);
}

Typed StatementCheck::function(const Expression& e) {
    if (e.distinct) refuse("42000", "DISTINCT stands in aggregate functions only.");
    std::vector<Typed> parts;
    const bool names_part = e.name.starts_with("date");
    for (std::size_t i = names_part ? 1 : 0; i < e.parts.size(); ++i)
        parts.push_back(type_of(*e.parts[i]));
    if (is_one_of(e.name, of_texts) && !parts[0].is_text() && parts[0].rank != Rank::unknown)
        refuse("42000", "The first argument of " + e.name + " must be a text.");
    if (e.name == "isnull") {
        if (parts[0].rank == Rank::null) return parts[1];
        if (parts[0].rank != Rank::unknown && !parts[0].is_text()) check_converts(parts[1], parts[0].rank);
        // The server silently cuts the second to the width of the first.
        if (parts[0].is_text() && parts[1].literal != nullptr && parts[0].length > 0 &&
            parts[1].length > parts[0].length) {
            refuse("22001", "isnull() would cut '" + *parts[1].literal + "'.");
        }
        return {parts[0].rank, parts[0].length, nullptr};
    }
    if (e.name == "coalesce") return meeting(parts);
    const FunctionRule* rule = find_function(e.name);
    static constexpr std::string_view whole[] = {"len",  "charindex", "datepart", "datediff",
                                                 "year", "month",     "day",      "isnumeric"};
    if (is_one_of(e.name, whole)) return of(Rank::integer);
    if (e.name == "getdate" || e.name == "dateadd") return of(Rank::datetime);
    if (e.name == "abs" || e.name == "round") return of(parts[0].is_text() ? Rank::floating : parts[0].rank);
    return rule == nullptr ? Typed{} : of(Rank::text);
}

bool StatementCheck::same(const Expression& a, const Expression& b) const {
    if (a.kind != b.kind || a.parts.size() != b.parts.size() || a.negated != b.negated) return false;
    if (a.query || b.query) return false;
    if (a.kind == Kind::value) return values_[a.slot] == values_[b.slot];
    if (a.kind == Kind::column) {
        return common::equal_ignoring_case(a.name, b.name) &&
               (a.table.empty() || b.table.empty() || common::equal_ignoring_case(a.table, b.table));
    }
    if (a.name != b.name || a.type.written != b.type.written) return false;
    for (std::size_t i = 0; i < a.parts.size(); ++i)
        if (!same(*a.parts[i], *b.parts[i])) return false;
    return true;
}

}  // namespace test::strict
