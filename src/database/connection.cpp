#include "database/connection.h"

#include "common/text.h"

namespace database {

int Columns::find(std::string_view name) const {
    for (std::size_t i = 0; i < names_.size(); ++i) {
        if (common::equal_ignoring_case(names_[i], name)) return static_cast<int>(i);
    }
    return -1;
}

const Value& Row::value(std::string_view column) const {
    const int at = columns_->find(column);
    if (at < 0) throw Error("42S22", "Invalid column name '" + std::string(column) + "'.", "");
    return cells_[static_cast<std::size_t>(at)];
}

Value Connection::scalar(const Sql& statement) {
    const Result result = query(statement);
    if (result.empty() || result.front().cells().empty()) return Null{};
    return result.front().cells().front();
}

std::optional<Row> Connection::last_row(const Sql& statement) {
    const Result result = query(statement);
    if (result.empty()) return std::nullopt;
    return result.rows().back();
}

std::vector<std::string> Connection::tables() {
    std::vector<std::string> names;
    for (const Row& row : query("select name from sys.tables where is_ms_shipped = 0 order by name"))
        names.push_back(row.text("name"));
    return names;
}

}  // namespace database
