// Conversions from type to type, and one combination of them that is translated as a whole.
#include "database/embedded/moments.h"
#include "database/embedded/writer.h"

namespace database::embedded {

namespace {

using Kind = Expression::Kind;

std::string call(std::string_view function, const std::string& what) {
    return std::string(function) + "(" + what + ")";
}

std::string call(std::string_view function, const std::string& what, std::int64_t number) {
    return std::string(function) + "(" + what + ", " + std::to_string(number) + ")";
}

std::string as_text(std::string sql, const Type& from, const Type& target, Writer::Purpose purpose,
                    const std::string& style) {
    using Purpose = Writer::Purpose;
    const bool bounded = target.length > 0;
    if (from.is_datetime()) {
        sql = "ts_moment_text(" + sql + ", " + style + ")";
    } else if (from.kind == Type::Kind::real || from.kind == Type::Kind::numeric) {
        sql = call("ts_number_text", sql, from.kind == Type::Kind::real ? 1 : 0);
    } else if (from.is_whole() && !(bounded && purpose == Purpose::convert)) {
        sql = "CAST(" + sql + " AS TEXT)";
    }
    // A column of the same width, or a narrower one, fits as it is.
    const bool fits = from.is_text() && from.length > 0 && from.length <= target.length;
    if (bounded && !fits && purpose == Purpose::store) sql = call("ts_fit", sql, target.length);
    if (bounded && !fits && purpose == Purpose::convert) sql = call("ts_cut", sql, target.length);
    return sql;
}

}  // namespace

TypedSql Writer::convert(TypedSql what, const Type& target, Purpose purpose, const std::string& style) {
    const Type from = what.type;
    std::string& sql = what.sql;
    what.type = target;
    if (from.is_null()) return what;
    const std::string plain_sql = sql;
    switch (target.kind) {
        case Type::Kind::text:
            sql = as_text(sql, from, target, purpose, style);
            break;
        case Type::Kind::integer:
            if (from.is_datetime()) sql = "round(ts_moment_number(" + sql + "))";
            if (!from.is_whole() || from.bytes > target.bytes) sql = call("ts_int", sql, target.bytes);
            break;
        case Type::Kind::bit:
            if (from.kind != Type::Kind::bit) sql = call("ts_bit", sql);
            break;
        case Type::Kind::real:
            if (from.is_text()) {
                sql = call("ts_real", sql);
            } else if (from.is_datetime()) {
                sql = call("ts_moment_number", sql);
            } else if (from.kind != Type::Kind::real && purpose != Purpose::store) {
                sql = "CAST(" + sql + " AS REAL)";
            }
            if (catalog_.rounds_reals && target.written == "real") sql = call("ts_single", sql);
            break;
        case Type::Kind::numeric:
            if (from.is_datetime()) sql = call("ts_moment_number", sql);
            if (target.length > 0 && !from.is_datetime()) {
                sql = "ts_numeric(" + sql + ", " + std::to_string(target.length) + ", " +
                      std::to_string(target.scale) + ")";
            } else if (from.is_text()) {
                sql = call("ts_real", sql);
            }
            break;
        case Type::Kind::datetime:
            if (from.is_text()) {
                sql = style == "0" ? call("ts_moment", sql) : "ts_moment(" + sql + ", " + style + ")";
            } else if (!from.is_datetime()) {
                sql = call("ts_moment", sql);
            }
            if (target.written == "date") {
                sql = "(" + sql + " - " + sql + " % " + std::to_string(day_length) + ")";
            }
            break;
        case Type::Kind::null:
        case Type::Kind::other:
            break;
    }
    if (sql != plain_sql) what.plain = false;
    return what;
}

TypedSql Writer::conversion(const Expression& e) {
    TypedSql idiom;
    if (day_and_time(e, idiom)) return idiom;
    std::string style = "0";
    if (e.parts.size() > 1) style = to_whole(value(*e.parts[1])).sql;
    TypedSql result = convert(value(*e.parts[0]), e.type, Purpose::convert, style);
    // The result is no longer a plain column.
    result.plain = false;
    return result;
}

// Returns the moment if the expression is convert(varchar, moment, style), else null.
const Expression* Writer::styled_moment(const Expression& e, std::int64_t style) {
    if (e.kind != Kind::convert || !e.type.is_text() || e.parts.size() != 2) return nullptr;
    if (e.parts[1]->kind != Kind::value) return nullptr;
    const auto* number = std::get_if<std::int64_t>(&(*values_)[e.parts[1]->slot]);
    if (number == nullptr || *number != style || e.type.length < (style == 8 ? 8 : 10)) return nullptr;
    if (!inline_values_) pinned_.insert(e.parts[1]->slot);
    return e.parts[0].get();
}

bool Writer::day_and_time(const Expression& e, TypedSql& result) {
    if (!e.type.is_datetime() || e.parts.size() != 1) return false;
    const auto is_sum = [](const Expression& x) { return x.kind == Kind::binary && x.name == "+"; };
    const Expression& outer = *e.parts[0];
    if (!is_sum(outer) || !is_sum(*outer.parts[0])) return false;
    const Expression& day_text = *outer.parts[0]->parts[0];
    const std::string* blank = text_value(*outer.parts[0]->parts[1]);
    const Expression& time = *outer.parts[1];
    if (blank == nullptr || *blank != " " || time.kind != Kind::function || time.name != "isnull" ||
        time.parts.size() != 2) {
        return false;
    }
    const std::string* missing = text_value(*time.parts[1]);
    const Expression* day = styled_moment(day_text, 101);
    const Expression* of_day = styled_moment(*time.parts[0], 8);
    if (day == nullptr || of_day == nullptr || missing == nullptr) return false;
    // A missing time must be midnight.
    const auto ticks = parse_ticks(*missing);
    if (!ticks || *ticks != day_zero) return false;
    const TypedSql d = value(*day), t = value(*of_day);
    if (!d.type.is_datetime() || !t.type.is_datetime()) return false;
    const std::string length = std::to_string(day_length);
    result.sql = "(" + d.sql + " - " + d.sql + " % " + length + " + ifnull(" + t.sql + " % " + length +
                 " / 1000 * 1000, 0))";
    result.type = of_kind(Type::Kind::datetime);
    result.day = d.sql;
    return true;
}

}  // namespace database::embedded
