#include "database/choices.h"

#include <charconv>
#include <utility>

#include "common/text.h"

namespace database {

std::vector<common::Choice> choices(const Result& rows, std::string_view code, std::string_view name) {
    std::vector<common::Choice> list;
    list.reserve(rows.size());
    for (const Row& row : rows)
        list.push_back({row.integer(code), std::string(common::trim_right(row.text(name)))});
    return list;
}

Reads::Take into(std::vector<common::Choice>& list, const char* code, const char* name) {
    return [&list, code, name](const Result& rows) { list = choices(rows, code, name); };
}

namespace {

template <typename Ask>
std::vector<common::Choice> read_alone(Connection& connection, const Ask& ask) {
    std::vector<common::Choice> list;
    Reads reads;
    ask(reads, list);
    reads.run(connection);
    return list;
}

}  // namespace

void ask_stores(Reads& reads, std::vector<common::Choice>& list) {
    reads.add("select * from stocks", into(list));
}

std::vector<common::Choice> load_stores(Connection& connection) {
    return read_alone(connection, ask_stores);
}

void ask_drawers(Reads& reads, std::int64_t store, std::vector<common::Choice>& list) {
    reads.add(Sql("select * from cash where stcode =") + store, into(list));
}

std::vector<common::Choice> load_drawers(Connection& connection, std::int64_t store) {
    return read_alone(connection, [&](Reads& reads, auto& list) { ask_drawers(reads, store, list); });
}

void ask_workers(Reads& reads, std::vector<common::Choice>& list) {
    reads.add("select * from worker", into(list, "work_code", "work_name"));
}

std::vector<common::Choice> load_workers(Connection& connection) {
    return read_alone(connection, ask_workers);
}

namespace {

// The type as the database declares it; "" if the table has no such column.
std::string_view type_of(const Connection::Table& table, std::string_view column) {
    for (std::size_t i = 0; i < table.columns.size() && i < table.types.size(); ++i) {
        if (common::equal_ignoring_case(table.columns[i], column)) return table.types[i];
    }
    return {};
}

}  // namespace

TextLimits::TextLimits(Connection& connection, std::string_view table)
    : table_(connection.description(table)) {}

bool TextLimits::fits(std::string_view column, std::string_view text) const {
    const std::string_view type = type_of(*table_, column);
    const auto bracket = type.find('(');
    std::size_t width = 0;
    if (bracket == std::string_view::npos ||
        std::from_chars(type.data() + bracket + 1, type.data() + type.size(), width).ec != std::errc())
        return true;  // no width, or "max"
    return common::column_width(text) <= width;
}

std::optional<std::int64_t> highest_whole_number(Connection& connection, std::string_view table,
                                                 std::string_view column) {
    constexpr std::pair<std::string_view, std::int64_t> highest[] = {
        {"tinyint", 255}, {"smallint", 32'767}, {"int", 2'147'483'647}};
    const auto description = connection.description(table);
    const std::string_view type = type_of(*description, column);
    for (const auto& [name, number] : highest) {
        if (common::equal_ignoring_case(type, name)) return number;
    }
    return std::nullopt;
}

}  // namespace database
