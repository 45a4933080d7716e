#include "shop/rows.h"

#include <stdexcept>

#include "common/csv.h"
#include "common/numbers.h"
#include "common/text.h"
#include "database/recordset.h"
#include "shop/users.h"

namespace shop {

using database::Value;

std::string put_in_marks(const std::string& cell, const common::Date& today) {
    if (!cell.starts_with('{') || !cell.ends_with('}')) return cell;
    const std::string_view mark = std::string_view(cell).substr(1, cell.size() - 2);
    if (mark.starts_with("allow:")) return permission_string(mark.substr(6));
    if (mark.starts_with("today")) {
        const std::string_view days = mark.substr(5);
        const auto offset = days.empty() ? std::optional<long long>(0) : common::parse_integer(days);
        if (offset) return common::date_text(common::add_days(today, static_cast<long>(*offset)));
    }
    throw std::invalid_argument("unknown mark " + cell);
}

namespace {

enum class ColumnKind { number, text, moment };

ColumnKind kind_of(std::string_view declared_type) {
    const std::string type = common::lower_ascii(declared_type);
    if (type.find("char") != std::string::npos || type.find("text") != std::string::npos)
        return ColumnKind::text;
    if (type.find("date") != std::string::npos) return ColumnKind::moment;
    return ColumnKind::number;
}

Value value_of(const std::string& cell, ColumnKind kind) {
    if (cell.empty()) return database::Null{};
    if (kind == ColumnKind::text) return cell;
    if (kind == ColumnKind::moment) {
        if (const auto moment = common::parse_moment(cell)) return *moment;
    } else if (const auto whole = common::parse_integer(cell)) {
        return std::int64_t{*whole};
    } else if (const auto number = common::parse_number(cell)) {
        return *number;
    }
    throw std::invalid_argument("\"" + cell + "\" does not fit its column");
}

std::vector<ColumnKind> kinds_of(database::Connection& connection, const EmbeddedTable& rows,
                                 const std::vector<std::string>& names) {
    const auto table = connection.describe(rows.table);
    std::vector<ColumnKind> kinds;
    for (const std::string& name : names) {
        const auto column = find_column(table.columns, name);
        if (!column) throw std::invalid_argument(std::string(rows.table) + " has no column " + name);
        kinds.push_back(kind_of(table.types.at(*column)));
    }
    return kinds;
}

}  // namespace

std::optional<std::size_t> find_column(const std::vector<std::string>& columns, std::string_view name) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (common::equal_ignoring_case(columns[i], name)) return i;
    }
    return std::nullopt;
}

std::int64_t load_rows(database::Connection& connection, const EmbeddedTable& rows, const common::Date& today,
                       const std::function<void()>& each_row) {
    common::CsvReader reader(rows.csv);
    std::vector<std::string> names;
    std::vector<std::string> cells;
    if (!reader.next(names)) return 0;
    const std::vector<ColumnKind> kinds = kinds_of(connection, rows, names);
    database::Recordset target(
        connection, database::Sql::from_administrator("select * from [" + std::string(rows.table) + "]"));
    std::int64_t count = 0;
    while (reader.next(cells)) {
        if (cells.size() != names.size())
            throw common::CsvError(reader.line(), "another number of cells than the header");
        target.add();
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const Value value = value_of(put_in_marks(cells[i], today), kinds[i]);
            if (!database::is_null(value)) target.set(names[i], value);
        }
        target.update();
        ++count;
        if (each_row) each_row();
    }
    return count;
}

}  // namespace shop
