// The functions that statements may call: one line each in the table at the end.
#include <algorithm>

#include "database/embedded/collation.h"
#include "database/embedded/moments.h"
#include "database/embedded/writer.h"

namespace database::embedded {

namespace {

using ValueKind = Type::Kind;

TypedSql argument(Writer& w, const Expression& e, std::size_t i) {
    return w.value(*e.parts[i]);
}

// Arguments of the kinds named by `form` ("t" text, "i" whole number, "n" number, "d" moment, "." any),
// joined.
std::string arguments(Writer& w, const Expression& e, std::string_view form) {
    std::string list;
    for (std::size_t i = 0; i < e.parts.size(); ++i) {
        TypedSql part = argument(w, e, i);
        switch (form[std::min(i, form.size() - 1)]) {
            case 't':
                part = w.to_text(std::move(part));
                break;
            case 'i':
                part = w.to_whole(std::move(part));
                break;
            case 'n':
                part = w.to_number(std::move(part));
                break;
            case 'd':
                part = w.to_moment(std::move(part));
                break;
            default:
                break;
        }
        list += (i == 0 ? "" : ", ") + part.sql;
    }
    return list;
}

// Functions whose arguments and result have fixed types: "ts_" and the name.
struct Fixed {
    std::string_view name;
    std::string_view form;
    ValueKind result;
};
constexpr Fixed fixed[] = {
    {"len", "t", ValueKind::integer},         {"upper", "t", ValueKind::text},
    {"lower", "t", ValueKind::text},          {"left", "ti", ValueKind::text},
    {"right", "ti", ValueKind::text},         {"substring", "tii", ValueKind::text},
    {"charindex", "tti", ValueKind::integer}, {"replace", "ttt", ValueKind::text},
    {"stuff", "tiit", ValueKind::text},       {"isnumeric", ".", ValueKind::integer},
};

TypedSql by_form(Writer& w, const Expression& e) {
    const auto* found =
        std::find_if(std::begin(fixed), std::end(fixed), [&](const Fixed& f) { return f.name == e.name; });
    return typed("ts_" + e.name + "(" + arguments(w, e, found->form) + ")", found->result);
}

TypedSql trimmed(Writer& w, const Expression& e) {
    return typed(e.name + "(" + arguments(w, e, "t") + ")", ValueKind::text);
}

TypedSql getdate(Writer&, const Expression&) {
    return typed("ts_getdate()", ValueKind::datetime);
}

// The result has the type of the first, and the second is converted to it.
TypedSql isnull(Writer& w, const Expression& e) {
    TypedSql first = argument(w, e, 0), second = argument(w, e, 1);
    if (first.type.is_null()) return second;
    Type type = of_kind(first.type.kind);
    const bool fits = second.type.length > 0 && second.type.length <= first.type.length;
    second = w.convert(std::move(second), type, Writer::Purpose::compute);
    type.length = first.type.length;
    if (type.is_text() && type.length > 0 && !fits && !second.type.is_null())
        second.sql = "ts_cut(" + second.sql + ", " + std::to_string(type.length) + ")";
    return {"ifnull(" + first.sql + ", " + second.sql + ")", type, false, false};
}

TypedSql coalesce(Writer& w, const Expression& e) {
    std::vector<TypedSql> parts;
    Type met;
    for (std::size_t i = 0; i < e.parts.size(); ++i) {
        parts.push_back(argument(w, e, i));
        if (met.kind < parts.back().type.kind) met = of_kind(parts.back().type.kind);
    }
    std::string sql = "coalesce(";
    for (std::size_t i = 0; i < parts.size(); ++i) {
        sql += (i == 0 ? "" : ", ") + w.convert(parts[i], met, Writer::Purpose::compute).sql;
    }
    return typed(sql + ")", met.kind);
}

TypedSql count(Writer& w, const Expression& e) {
    if (e.parts[0]->kind == Expression::Kind::all) return typed("count(*)", ValueKind::integer);
    return typed("count(" + std::string(e.distinct ? "DISTINCT " : "") + w.collated(argument(w, e, 0)) + ")",
                 ValueKind::integer);
}

TypedSql total(Writer& w, const Expression& e) {
    const TypedSql what = argument(w, e, 0);
    if (what.type.is_text() || what.type.is_datetime()) w.fail("'" + e.name + "' takes numbers only.");
    const std::string inside = (e.distinct ? "DISTINCT " : "") + what.sql;
    if (e.name == "sum") {
        return typed("sum(" + inside + ")", what.type.is_whole() ? ValueKind::integer : what.type.kind);
    }
    if (what.type.is_whole()) return typed("CAST(avg(" + inside + ") AS INTEGER)", ValueKind::integer);
    return typed("avg(" + inside + ")", ValueKind::real);
}

TypedSql extreme(Writer& w, const Expression& e) {
    const TypedSql what = argument(w, e, 0);
    return {e.name + "(" + w.collated(what) + ")", of_kind(what.type.kind), false, false};
}

TypedSql round_to(Writer& w, const Expression& e) {
    const TypedSql what = w.to_number(argument(w, e, 0));
    std::string sql = "ts_round(" + what.sql;
    for (std::size_t i = 1; i < e.parts.size(); ++i)
        sql += ", " + w.to_whole(argument(w, e, i)).sql;
    return typed(sql + ")", what.type.kind);
}

TypedSql absolute(Writer& w, const Expression& e) {
    const TypedSql what = w.to_number(argument(w, e, 0));
    return typed("abs(" + what.sql + ")", what.type.kind);
}

// The parser reads the name of the part as a column.
std::string part_name(Writer& w, const Expression& e) {
    const Expression& part = *e.parts[0];
    if (part.kind != Expression::Kind::column || !part.table.empty())
        w.fail("'" + e.name + "' takes a part of a date.");
    const std::string& name = part.name;
    if (!part_of(day_zero, name)) w.fail("'" + name + "' is not a recognized part of a date.");
    return "'" + name + "'";
}

TypedSql datepart(Writer& w, const Expression& e) {
    return typed("ts_datepart(" + part_name(w, e) + ", " + w.to_moment(argument(w, e, 1)).sql + ")",
                 ValueKind::integer);
}

TypedSql dateadd(Writer& w, const Expression& e) {
    return typed("ts_dateadd(" + part_name(w, e) + ", " + w.to_whole(argument(w, e, 1)).sql + ", " +
                     w.to_moment(argument(w, e, 2)).sql + ")",
                 ValueKind::datetime);
}

TypedSql datediff(Writer& w, const Expression& e) {
    return typed("ts_datediff(" + part_name(w, e) + ", " + w.to_moment(argument(w, e, 1)).sql + ", " +
                     w.to_moment(argument(w, e, 2)).sql + ")",
                 ValueKind::integer);
}

// year, month, day
TypedSql part_of_date(Writer& w, const Expression& e) {
    return typed("ts_datepart('" + e.name + "', " + w.to_moment(argument(w, e, 0)).sql + ")",
                 ValueKind::integer);
}

// The functions that the program uses, and others that are useful at a command line. All are functions of SQL
// Server 2008 R2, the oldest that a shop may have.
constexpr FunctionRule rules[] = {
    {"abs", 1, 1, absolute},       {"avg", 1, 1, total},         {"charindex", 2, 3, by_form},
    {"coalesce", 2, 50, coalesce}, {"count", 1, 1, count},       {"dateadd", 3, 3, dateadd},
    {"datediff", 3, 3, datediff},  {"datepart", 2, 2, datepart}, {"day", 1, 1, part_of_date},
    {"getdate", 0, 0, getdate},    {"isnull", 2, 2, isnull},     {"isnumeric", 1, 1, by_form},
    {"left", 2, 2, by_form},       {"len", 1, 1, by_form},       {"lower", 1, 1, by_form},
    {"ltrim", 1, 1, trimmed},      {"max", 1, 1, extreme},       {"min", 1, 1, extreme},
    {"month", 1, 1, part_of_date}, {"replace", 3, 3, by_form},   {"right", 2, 2, by_form},
    {"round", 2, 3, round_to},     {"rtrim", 1, 1, trimmed},     {"stuff", 4, 4, by_form},
    {"substring", 3, 3, by_form},  {"sum", 1, 1, total},         {"upper", 1, 1, by_form},
    {"year", 1, 1, part_of_date},
};

}  // namespace

const FunctionRule* find_function(std::string_view name) {
    const auto* found = std::find_if(std::begin(rules), std::end(rules),
                                     [&](const FunctionRule& rule) { return rule.name == name; });
    return found == std::end(rules) ? nullptr : found;
}

bool is_aggregate(const Expression& e) {
    if (e.kind != Expression::Kind::function) return false;
    return e.name == "sum" || e.name == "count" || e.name == "avg" || e.name == "min" || e.name == "max";
}

}  // namespace database::embedded
