#include "database/choices.h"

#include <charconv>

#include "common/text.h"

namespace database {

std::vector<common::Choice> choices(const Result& rows, std::string_view code, std::string_view name) {
    std::vector<common::Choice> list;
    list.reserve(rows.size());
    for (const Row& row : rows)
        list.push_back({row.integer(code), std::string(common::trim_right(row.text(name)))});
    return list;
}

std::vector<common::Choice> load_stores(Connection& connection) {
    return choices(connection.query("select * from stocks"));
}

std::vector<common::Choice> load_drawers(Connection& connection, std::int64_t store) {
    return choices(connection.query(Sql("select * from cash where stcode =") + store));
}

std::vector<common::Choice> load_workers(Connection& connection) {
    return choices(connection.query("select * from worker"), "work_code", "work_name");
}

TextLimits::TextLimits(Connection& connection, std::string_view table)
    : table_(connection.description(table)) {}

bool TextLimits::fits(std::string_view column, std::string_view text) const {
    for (std::size_t i = 0; i < table_->columns.size() && i < table_->types.size(); ++i) {
        if (!common::equal_ignoring_case(table_->columns[i], column)) continue;
        const std::string& type = table_->types[i];
        const auto bracket = type.find('(');
        std::size_t width = 0;
        if (bracket == std::string::npos ||
            std::from_chars(type.data() + bracket + 1, type.data() + type.size(), width).ec != std::errc())
            return true;  // no width, or "max"
        return common::column_width(text) <= width;
    }
    return true;
}

}  // namespace database
