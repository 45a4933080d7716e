// The functions that statements may call: one line each in the table at the end.
#include <algorithm>

#include "database/embedded/collation.h"
#include "database/embedded/moments.h"
#include "database/embedded/writer.h"

namespace database::tsql {

namespace {

using Kind = Type::Kind;

Written written(std::string sql, Kind kind) {
    return {std::move(sql), of_kind(kind), false, false};
}

Written argument(Writer& w, const Expression& e, std::size_t i) {
    return w.value(*e.parts[i]);
}

// Arguments of the kinds named by `form` ("t" text, "i" whole number, "n" number, "d" moment, "." any),
// joined.
std::string arguments(Writer& w, const Expression& e, std::string_view form) {
    std::string list;
    for (std::size_t i = 0; i < e.parts.size(); ++i) {
        Written part = argument(w, e, i);
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
    Kind result;
};
constexpr Fixed fixed[] = {
    {"len", "t", Kind::integer},         {"upper", "t", Kind::text},      {"lower", "t", Kind::text},
    {"left", "ti", Kind::text},          {"right", "ti", Kind::text},     {"substring", "tii", Kind::text},
    {"charindex", "tti", Kind::integer}, {"replace", "ttt", Kind::text},  {"reverse", "t", Kind::text},
    {"replicate", "ti", Kind::text},     {"stuff", "tiit", Kind::text},   {"str", "nii", Kind::text},
    {"char", "i", Kind::text},           {"unicode", "t", Kind::integer}, {"isdate", "t", Kind::integer},
    {"isnumeric", ".", Kind::integer},   {"sqrt", "n", Kind::real},       {"sign", "n", Kind::integer},
};

Written by_form(Writer& w, const Expression& e) {
    const auto* found =
        std::find_if(std::begin(fixed), std::end(fixed), [&](const Fixed& f) { return f.name == e.name; });
    return written("ts_" + e.name + "(" + arguments(w, e, found->form) + ")", found->result);
}

Written trimmed(Writer& w, const Expression& e) {
    return written(e.name + "(" + arguments(w, e, "t") + ")", Kind::text);
}

Written nchar(Writer& w, const Expression& e) {
    return written("ts_char(" + arguments(w, e, "i") + ")", Kind::text);
}
Written ascii(Writer& w, const Expression& e) {
    return written("ts_unicode(" + arguments(w, e, "t") + ")", Kind::integer);
}
Written space(Writer& w, const Expression& e) {
    return written("ts_replicate(' ', " + arguments(w, e, "i") + ")", Kind::text);
}

Written getdate(Writer&, const Expression&) {
    return written("ts_getdate()", Kind::datetime);
}

// The first one's type is the result's, and the second is turned into it.
Written isnull(Writer& w, const Expression& e) {
    Written first = argument(w, e, 0), second = argument(w, e, 1);
    if (first.type.is_null()) return second;
    Type type = of_kind(first.type.kind);
    const bool fits = second.type.length > 0 && second.type.length <= first.type.length;
    second = w.convert(std::move(second), type, Writer::Purpose::compute);
    type.length = first.type.length;
    if (type.is_text() && type.length > 0 && !fits && !second.type.is_null())
        second.sql = "ts_cut(" + second.sql + ", " + std::to_string(type.length) + ")";
    return {"ifnull(" + first.sql + ", " + second.sql + ")", type, false, false};
}

Written coalesce(Writer& w, const Expression& e) {
    std::vector<Written> parts;
    Type met;
    for (std::size_t i = 0; i < e.parts.size(); ++i) {
        parts.push_back(argument(w, e, i));
        if (met.kind < parts.back().type.kind) met = of_kind(parts.back().type.kind);
    }
    std::string sql = "coalesce(";
    for (std::size_t i = 0; i < parts.size(); ++i) {
        sql += (i == 0 ? "" : ", ") + w.convert(parts[i], met, Writer::Purpose::compute).sql;
    }
    return written(sql + ")", met.kind);
}

Written nullif(Writer& w, const Expression& e) {
    const Written first = argument(w, e, 0);
    Written second = argument(w, e, 1);
    if (!first.type.is_null())
        second = w.convert(std::move(second), of_kind(first.type.kind), Writer::Purpose::compute);
    return {"nullif(" + w.collated(first) + ", " + second.sql + ")", of_kind(first.type.kind), false, false};
}

Written count(Writer& w, const Expression& e) {
    if (e.parts[0]->kind == Expression::Kind::all) return written("count(*)", Kind::integer);
    return written(
        "count(" + std::string(e.distinct ? "DISTINCT " : "") + w.collated(argument(w, e, 0)) + ")",
        Kind::integer);
}

Written total(Writer& w, const Expression& e) {
    const Written what = argument(w, e, 0);
    if (what.type.is_text() || what.type.is_datetime()) w.fail("'" + e.name + "' takes numbers only.");
    const std::string inside = (e.distinct ? "DISTINCT " : "") + what.sql;
    if (e.name == "sum") {
        return written("sum(" + inside + ")", what.type.is_whole() ? Kind::integer : what.type.kind);
    }
    if (what.type.is_whole()) return written("CAST(avg(" + inside + ") AS INTEGER)", Kind::integer);
    return written("avg(" + inside + ")", Kind::real);
}

Written extreme(Writer& w, const Expression& e) {
    const Written what = argument(w, e, 0);
    return {e.name + "(" + w.collated(what) + ")", of_kind(what.type.kind), false, false};
}

Written round_to(Writer& w, const Expression& e) {
    const Written what = w.to_number(argument(w, e, 0));
    std::string sql = "ts_round(" + what.sql;
    for (std::size_t i = 1; i < e.parts.size(); ++i)
        sql += ", " + w.to_whole(argument(w, e, i)).sql;
    return written(sql + ")", what.type.kind);
}

// abs, ceiling, floor, power: the result is of the argument's type.
Written keeping_type(Writer& w, const Expression& e) {
    const Written what = w.to_number(argument(w, e, 0));
    std::string sql = (e.name == "abs" ? "abs(" : "ts_" + e.name + "(") + what.sql;
    if (e.parts.size() > 1) sql += ", " + w.to_number(argument(w, e, 1)).sql;
    return written(sql + ")", what.type.kind);
}

// The part's name stands where a column would.
std::string part_name(Writer& w, const Expression& e) {
    const Expression& part = *e.parts[0];
    if (part.kind != Expression::Kind::column || !part.table.empty())
        w.fail("'" + e.name + "' takes a part of a date.");
    const std::string& name = part.name;
    if (!embedded::part_of(embedded::day_zero, name))
        w.fail("'" + name + "' is not a recognized part of a date.");
    return "'" + name + "'";
}

Written datepart(Writer& w, const Expression& e) {
    return written("ts_datepart(" + part_name(w, e) + ", " + w.to_moment(argument(w, e, 1)).sql + ")",
                   Kind::integer);
}

Written dateadd(Writer& w, const Expression& e) {
    return written("ts_dateadd(" + part_name(w, e) + ", " + w.to_whole(argument(w, e, 1)).sql + ", " +
                       w.to_moment(argument(w, e, 2)).sql + ")",
                   Kind::datetime);
}

Written datediff(Writer& w, const Expression& e) {
    return written("ts_datediff(" + part_name(w, e) + ", " + w.to_moment(argument(w, e, 1)).sql + ", " +
                       w.to_moment(argument(w, e, 2)).sql + ")",
                   Kind::integer);
}

// year, month, day
Written part_of_date(Writer& w, const Expression& e) {
    return written("ts_datepart('" + e.name + "', " + w.to_moment(argument(w, e, 0)).sql + ")",
                   Kind::integer);
}

// Those of SQL Server 2008 R2, the oldest that a shop may have; "trim" and "concat" came later.
constexpr FunctionRule rules[] = {
    {"abs", 1, 1, keeping_type},     {"ascii", 1, 1, ascii},        {"avg", 1, 1, total},
    {"ceiling", 1, 1, keeping_type}, {"char", 1, 1, by_form},       {"charindex", 2, 3, by_form},
    {"coalesce", 2, 50, coalesce},   {"count", 1, 1, count},        {"count_big", 1, 1, count},
    {"dateadd", 3, 3, dateadd},      {"datediff", 3, 3, datediff},  {"datepart", 2, 2, datepart},
    {"day", 1, 1, part_of_date},     {"floor", 1, 1, keeping_type}, {"getdate", 0, 0, getdate},
    {"isdate", 1, 1, by_form},       {"isnull", 2, 2, isnull},      {"isnumeric", 1, 1, by_form},
    {"left", 2, 2, by_form},         {"len", 1, 1, by_form},        {"lower", 1, 1, by_form},
    {"ltrim", 1, 1, trimmed},        {"max", 1, 1, extreme},        {"min", 1, 1, extreme},
    {"month", 1, 1, part_of_date},   {"nchar", 1, 1, nchar},        {"nullif", 2, 2, nullif},
    {"power", 2, 2, keeping_type},   {"replace", 3, 3, by_form},    {"replicate", 2, 2, by_form},
    {"reverse", 1, 1, by_form},      {"right", 2, 2, by_form},      {"round", 2, 3, round_to},
    {"rtrim", 1, 1, trimmed},        {"sign", 1, 1, by_form},       {"space", 1, 1, space},
    {"sqrt", 1, 1, by_form},         {"str", 1, 3, by_form},        {"stuff", 4, 4, by_form},
    {"substring", 3, 3, by_form},    {"sum", 1, 1, total},          {"sysdatetime", 0, 0, getdate},
    {"unicode", 1, 1, by_form},      {"upper", 1, 1, by_form},      {"year", 1, 1, part_of_date},
};

}  // namespace

const FunctionRule* find_function(std::string_view name) {
    const auto* found = std::find_if(std::begin(rules), std::end(rules),
                                     [&](const FunctionRule& rule) { return rule.name == name; });
    return found == std::end(rules) ? nullptr : found;
}

bool is_aggregate(const Expression& e) {
    if (e.kind != Expression::Kind::function) return false;
    return e.name == "sum" || e.name == "count" || e.name == "count_big" || e.name == "avg" ||
           e.name == "min" || e.name == "max";
}

}  // namespace database::tsql
