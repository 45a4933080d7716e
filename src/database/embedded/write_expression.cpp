// Expressions: what an operator means depends on the types of its operands.
#include <algorithm>

#include "common/text.h"
#include "database/embedded/collation.h"
#include "database/embedded/moments.h"
#include "database/embedded/name_index.h"
#include "database/embedded/writer.h"
#include "database/error.h"

namespace database::embedded {

namespace {

using Kind = Expression::Kind;

TypedSql condition_of(std::string sql) {
    TypedSql made = typed(std::move(sql), Type::Kind::integer);
    made.condition = true;
    return made;
}

// The type that operands of two types are converted to.
Type meeting(const Type& a, const Type& b) {
    const Type& higher = a.kind < b.kind ? b : a;
    Type met = of_kind(higher.kind);
    if (met.is_whole()) met.kind = Type::Kind::integer;
    return met;
}

bool is_comparison(const std::string& op) {
    return op == "=" || op == "<>" || op == "<" || op == ">" || op == "<=" || op == ">=";
}

}  // namespace

void Writer::fail(const std::string& why) const {
    throw Error("42000", why, "");
}

TypedSql Writer::write(const Expression& e) {
    struct Depth {
        int& depth;
        explicit Depth(int& d) : depth(++d) {}
        ~Depth() { --depth; }
    } guard(depth_);
    if (depth_ > 400) fail("The statement is nested too deeply.");
    switch (e.kind) {
        case Kind::value:
            return literal(e.slot);
        case Kind::null:
            return typed("NULL", Type::Kind::null);
        case Kind::column:
            return column(e);
        case Kind::all:
            fail("'*' stands where one value is expected.");
        case Kind::unary:
            return unary(e);
        case Kind::binary:
            return binary(e);
        case Kind::convert:
            return conversion(e);
        case Kind::branch:
            return branch(e);
        case Kind::in_list:
        case Kind::in_select:
            return in(e);
        case Kind::like:
            return like(e);
        case Kind::between: {
            const TypedSql what = value(*e.parts[0]);
            const std::string low = comparison(">=", what, value(*e.parts[1])).sql;
            const std::string high = comparison("<=", what, value(*e.parts[2])).sql;
            return condition_of((e.negated ? "NOT (" : "(") + low + " AND " + high + ")");
        }
        case Kind::is_null:
            return condition_of("(" + value(*e.parts[0]).sql + (e.negated ? " IS NOT NULL)" : " IS NULL)"));
        case Kind::exists: {
            std::vector<Column> columns;
            return condition_of("EXISTS (" + query(*e.query, columns, nullptr) + ")");
        }
        case Kind::select: {
            std::vector<Column> columns;
            std::string sql = "(" + query(*e.query, columns, nullptr) + ")";
            if (columns.size() != 1) fail("A query that stands for a value must have one column.");
            return {std::move(sql), columns[0].type, false, false};
        }
        case Kind::function: {
            const FunctionRule* rule = find_function(e.name);
            if (rule == nullptr)
                fail("'" + e.name + "' is not a recognized function of the embedded engine.");
            if (e.parts.size() < rule->least || e.parts.size() > rule->most) {
                fail("The function '" + e.name + "' does not take " + std::to_string(e.parts.size()) +
                     " arguments.");
            }
            return rule->write(*this, e);
        }
    }
    fail("Incorrect syntax.");
}

TypedSql Writer::value(const Expression& expression) {
    TypedSql what = write(expression);
    if (what.condition) fail("A condition stands where a value is expected.");
    return what;
}

std::string Writer::condition(const Expression& expression) {
    TypedSql what = write(expression);
    if (!what.condition) {
        fail("An expression of non-boolean type specified in a context where a condition is expected.");
    }
    return std::move(what.sql);
}

TypedSql Writer::literal(std::size_t slot) {
    const Value& value = (*values_)[slot];
    static constexpr Type::Kind kinds[] = {Type::Kind::null, Type::Kind::integer, Type::Kind::real,
                                           Type::Kind::text, Type::Kind::datetime};
    const Type::Kind kind = kinds[value.index()];
    if (!inline_values_) return typed("?" + std::to_string(slot + 1), kind);
    if (const auto* text = std::get_if<std::string>(&value)) {
        return typed(quoted_text(*text), kind);
    }
    if (const auto* moment = std::get_if<common::Moment>(&value)) {
        return typed(std::to_string(ticks_of(*moment)), kind);
    }
    if (std::holds_alternative<double>(value)) {
        std::string sql = text_of(value);
        if (sql.find_first_of(".e") == std::string::npos) sql += ".0";
        return typed(std::move(sql), kind);
    }
    return typed(is_null(value) ? "NULL" : text_of(value), kind);
}

const std::string* Writer::text_value(const Expression& expression) {
    if (expression.kind != Kind::value) return nullptr;
    const auto* text = std::get_if<std::string>(&(*values_)[expression.slot]);
    if (text != nullptr && !inline_values_) pinned_.insert(expression.slot);
    return text;
}

TypedSql Writer::unary(const Expression& e) {
    if (e.name == "not") {
        ++negations_;
        std::string sql = "NOT (" + condition(*e.parts[0]) + ")";
        --negations_;
        return condition_of(std::move(sql));
    }
    TypedSql operand = to_number(value(*e.parts[0]));
    if (operand.type.is_datetime()) fail("The operator '" + e.name + "' does not take a date.");
    operand.sql = "(" + e.name + " " + operand.sql + ")";
    operand.plain = false;
    return operand;
}

TypedSql Writer::binary(const Expression& e) {
    if (e.name == "and" || e.name == "or") {
        // Long chains lean to the left and are written without recursion.
        std::vector<const Expression*> chain;
        const Expression* at = &e;
        for (; at->kind == Kind::binary && at->name == e.name; at = at->parts[0].get())
            chain.push_back(at);
        std::vector<const Expression*> parts{at};
        for (auto link = chain.rbegin(); link != chain.rend(); ++link)
            parts.push_back((*link)->parts[1].get());
        if (e.name == "and") return condition_of("(" + conjunction(parts) + ")");
        std::string sql;
        for (const Expression* part : parts)
            sql += (sql.empty() ? "(" : " OR ") + condition(*part);
        return condition_of(sql + ")");
    }
    TypedSql left = value(*e.parts[0]);
    // "vcode <> -1" may be the condition of an index, which the engine recognises only with the number itself
    // in the statement.
    const bool was_inline = inline_values_;
    if (e.name == "<>" && is_small_constant(*e.parts[1])) inline_values_ = true;
    TypedSql right = value(*e.parts[1]);
    inline_values_ = was_inline;
    if (is_comparison(e.name)) return comparison(e.name, std::move(left), std::move(right));
    return arithmetic(e.name, std::move(left), std::move(right));
}

bool Writer::is_small_constant(const Expression& e) {
    if (e.kind == Kind::unary && e.name == "-") return is_small_constant(*e.parts[0]);
    if (e.kind != Kind::value) return false;
    const auto* number = std::get_if<std::int64_t>(&(*values_)[e.slot]);
    if (number == nullptr || *number > 9) return false;
    pinned_.insert(e.slot);
    return true;
}

TypedSql Writer::to_text(TypedSql what) {
    if (what.type.is_text() || what.type.is_null()) return what;
    return convert(std::move(what), of_kind(Type::Kind::text), Purpose::compute);
}

TypedSql Writer::to_number(TypedSql what) {
    if (!what.type.is_text()) return what;
    return convert(std::move(what), of_kind(Type::Kind::real), Purpose::compute);
}

TypedSql Writer::to_whole(TypedSql what) {
    if (what.type.is_whole() || what.type.is_null()) return what;
    return convert(std::move(what), of_kind(Type::Kind::integer), Purpose::compute);
}

TypedSql Writer::to_moment(TypedSql what) {
    if (what.type.is_datetime() || what.type.is_null()) return what;
    return convert(std::move(what), of_kind(Type::Kind::datetime), Purpose::compute);
}

std::string Writer::collated(const TypedSql& what) const {
    if (!what.type.is_text() || what.plain) return what.sql;
    return "(" + what.sql + " COLLATE " + collation_name + ")";
}

TypedSql Writer::arithmetic(const std::string& op, TypedSql left, TypedSql right) {
    const bool joins = op == "+" && (left.type.is_text() || right.type.is_text()) &&
                       (left.type.is_text() || left.type.is_null()) &&
                       (right.type.is_text() || right.type.is_null());
    if (joins) return typed("(" + left.sql + " || " + right.sql + ")", Type::Kind::text);
    if (left.type.is_text() && right.type.is_text()) fail("The operator '" + op + "' does not take texts.");
    if (left.type.is_datetime() || right.type.is_datetime()) {
        return moment_arithmetic(op, std::move(left), std::move(right));
    }
    const Type met = meeting(left.type, right.type);
    // A text beside a number is read as one of its type.
    if (left.type.is_text()) left = convert(std::move(left), met, Purpose::compute);
    if (right.type.is_text()) right = convert(std::move(right), met, Purpose::compute);
    if (op == "/") {
        if (!met.is_whole()) left.sql = "CAST(" + left.sql + " AS REAL)";
        return typed("ts_div(" + left.sql + ", " + right.sql + ")",
                     met.is_whole() ? met.kind : Type::Kind::real);
    }
    if (op == "%") return typed("ts_mod(" + left.sql + ", " + right.sql + ")", met.kind);
    return typed("(" + left.sql + " " + op + " " + right.sql + ")", met.kind);
}

// A moment and a number of days; or a text, which is then a moment too.
TypedSql Writer::moment_arithmetic(const std::string& op, TypedSql left, TypedSql right) {
    if ((op != "+" && op != "-") || (op == "-" && !left.type.is_datetime())) {
        fail("The operator '" + op + "' does not take dates in this order.");
    }
    if (!left.type.is_datetime()) std::swap(left, right);
    if (right.type.is_datetime() || right.type.is_text()) {
        fail("Two dates cannot be added or subtracted on the embedded engine; use datediff.");
    }
    return typed("(" + left.sql + " " + op + " CAST(round(" + right.sql + " * " + std::to_string(day_length) +
                     ") AS INTEGER))",
                 Type::Kind::datetime);
}

TypedSql Writer::comparison(const std::string& op, TypedSql left, TypedSql right) {
    if (left.type.is_datetime() || right.type.is_datetime()) {
        left = to_moment(std::move(left));
        right = to_moment(std::move(right));
        if (!left.day.empty() && right.day.empty()) return condition_of(moment_comparison(op, left, right));
    } else if (left.type.is_text() != right.type.is_text()) {
        const Type met = meeting(left.type, right.type);
        if (!left.type.is_null() && !right.type.is_null() && met.kind != Type::Kind::other) {
            (left.type.is_text() ? left : right) =
                convert(left.type.is_text() ? left : right, met, Purpose::compute);
        }
    } else if (left.type.is_text() && !left.plain && !right.plain) {
        left.sql = collated(left);
    }
    return condition_of("(" + left.sql + " " + op + " " + right.sql + ")");
}

// A moment made from a day and a time differs from its day by less than a day, so the day's column alone
// decides nearly all rows. The "+" keeps the engine from using an index on the day for "all before", which is
// a wide range; "all since" usually is a narrow one.
std::string Writer::moment_comparison(const std::string& op, const TypedSql& left,
                                      const TypedSql& right) const {
    const std::string whole = left.sql + " " + op + " " + right.sql;
    const std::string length = std::to_string(day_length);
    const std::string day = "(" + right.sql + " - " + right.sql + " % " + length + ")";
    if (op == "<" || op == "<=") return "(+" + left.day + " < " + day + " OR " + whole + ")";
    if (op == ">" || op == ">=") {
        return "(" + left.day + " >= " + day + " AND (+" + left.day + " >= " + day + " + " + length + " OR " +
               whole + "))";
    }
    return "(" + whole + ")";
}

TypedSql Writer::branch(const Expression& e) {
    Type met;
    std::vector<TypedSql> results;
    std::vector<std::string> conditions;
    std::size_t at = e.has_operand ? 1 : 0;
    const std::size_t end = e.parts.size() - (e.has_else ? 1 : 0);
    for (; at + 1 < end; at += 2) {
        if (e.has_operand) {
            conditions.push_back(comparison("=", value(*e.parts[0]), value(*e.parts[at])).sql);
        } else {
            conditions.push_back(condition(*e.parts[at]));
        }
        results.push_back(value(*e.parts[at + 1]));
        met = meeting(met, results.back().type);
    }
    if (e.has_else) {
        results.push_back(value(*e.parts.back()));
        met = meeting(met, results.back().type);
    }
    std::string sql = "CASE";
    for (std::size_t i = 0; i < results.size(); ++i) {
        const std::string result = convert(results[i], met, Purpose::compute).sql;
        sql += i < conditions.size() ? " WHEN " + conditions[i] + " THEN " + result : " ELSE " + result;
    }
    return typed(sql + " END", met.kind);
}

TypedSql Writer::in(const Expression& e) {
    TypedSql what = value(*e.parts[0]);
    if (e.kind == Kind::in_select) {
        std::vector<Column> columns;
        const std::string list = query(*e.query, columns, nullptr);
        if (columns.size() != 1) fail("The query after IN must have one column.");
        if (what.type.is_text() != columns[0].type.is_text()) {
            fail("IN compares a text with a query of numbers or dates; convert one of them.");
        }
        return condition_of("(" + collated(what) + (e.negated ? " NOT IN (" : " IN (") + list + "))");
    }
    // The whole list has one type, as on the server.
    std::vector<TypedSql> list;
    Type met = what.type;
    for (std::size_t i = 1; i < e.parts.size(); ++i) {
        list.push_back(value(*e.parts[i]));
        met = meeting(met, list.back().type);
    }
    if (what.type.is_text() != met.is_text()) what = convert(std::move(what), met, Purpose::compute);
    std::string sql = "(" + collated(what) + (e.negated ? " NOT IN (" : " IN (");
    for (std::size_t i = 0; i < list.size(); ++i) {
        const bool converts = met.is_datetime() || list[i].type.is_text() != met.is_text();
        sql += (i == 0 ? "" : ", ") + (converts ? convert(list[i], met, Purpose::compute).sql : list[i].sql);
    }
    return condition_of(sql + "))");
}

// The searches of one column in a conjunction are answered together, from its index if it has one. The index
// is read in a query of its own, or the engine would read the whole table in another order.
std::string Writer::name_searches(const Expression& column, const std::vector<const Expression*>& likes) {
    const ScopeSource* const source = source_with_name_index(column);
    const std::string name = source != nullptr ? quoted_name(column.name) : to_text(value(column)).sql;
    const std::string folded = "ts_folded(" + name + ")";
    std::string conditions;
    for (const Expression* like : likes) {
        const std::string pattern = to_text(value(*like->parts[1])).sql;
        if (source != nullptr && conditions.empty())
            conditions =
                folded + " >= ts_like_from(" + pattern + ") AND " + folded + " < ts_like_to(" + pattern + ")";
        conditions += (conditions.empty() ? "" : " AND ") + std::string("ts_like_folded(") + folded + ", " +
                      pattern + ")";
    }
    if (source == nullptr) return "(" + conditions + ")";
    return "(" + quoted_name(source->alias) + ".rowid IN (SELECT rowid FROM " +
           quoted_name(source->table->name) + " INDEXED BY " + quoted_name(name_index(source->table->name)) +
           " WHERE " + conditions + "))";
}

const Writer::ScopeSource* Writer::source_with_name_index(const Expression& column) const {
    if (negations_ > 0 || !common::equal_ignoring_case(column.name, "name")) return nullptr;
    for (const ScopeSource& source : scope_->sources) {
        const bool named = column.table.empty() || common::equal_ignoring_case(column.table, source.alias);
        if (!named || source.table == nullptr || source.table->find(column.name) < 0) continue;
        return catalog_.has_index(name_index(source.table->name)) ? &source : nullptr;
    }
    return nullptr;
}

std::string Writer::conjunction(const std::vector<const Expression*>& parts) {
    const auto searched = [&](const Expression& e) {
        return e.kind == Kind::like && !e.negated ? searched_column(*this, *e.parts[0]) : nullptr;
    };
    std::string sql;
    std::set<std::string> written;
    for (const Expression* part : parts) {
        const Expression* const column = searched(*part);
        std::vector<const Expression*> likes;
        if (column != nullptr) {
            if (!written.insert(value(*column).sql).second) continue;
            for (const Expression* other : parts) {
                const Expression* const same = searched(*other);
                if (same != nullptr && value(*same).sql == value(*column).sql) likes.push_back(other);
            }
        }
        sql += (sql.empty() ? "" : " AND ") +
               (column != nullptr ? name_searches(*column, likes) : condition(*part));
    }
    return sql;
}

TypedSql Writer::like(const Expression& e) {
    if (const Expression* column = searched_column(*this, *e.parts[0])) {
        negations_ += e.negated ? 1 : 0;
        const std::string found = name_searches(*column, {&e});
        negations_ -= e.negated ? 1 : 0;
        return condition_of((e.negated ? "(NOT " : "(") + found + ")");
    }
    const std::string what = to_text(value(*e.parts[0])).sql;
    const std::string pattern = to_text(value(*e.parts[1])).sql;
    return condition_of((e.negated ? "(NOT ts_like(" : "(ts_like(") + what + ", " + pattern + "))");
}

}  // namespace database::embedded
