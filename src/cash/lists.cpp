#include "cash/lists.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/text.h"

namespace cash {

using database::Sql;

namespace {

std::vector<Choice> choices(const database::Result& rows, std::string_view code = "code",
                            std::string_view name = "name") {
    std::vector<Choice> list;
    for (const auto& row : rows)
        list.push_back({row.integer(code), row.text(name)});
    return list;
}

}  // namespace

std::vector<Choice> load_stores(database::Connection& connection) {
    return choices(connection.query("select * from stocks"));
}

std::vector<Choice> load_drawers(database::Connection& connection, std::int64_t store) {
    return choices(connection.query(Sql("select * from cash where stcode =") + store));
}

std::vector<Choice> load_workers(database::Connection& connection) {
    return choices(connection.query("select * from worker"), "work_code", "work_name");
}

std::vector<Choice> load_main_headings(database::Connection& connection) {
    return choices(connection.query("select * from mainx"));
}

std::vector<Choice> load_sub_headings(database::Connection& connection, std::int64_t main_heading) {
    return choices(connection.query(Sql("select * from subx where mcode=") + main_heading));
}

std::string name_of(const std::vector<Choice>& list, std::int64_t code) {
    for (const Choice& choice : list) {
        if (choice.code == code) return choice.name;
    }
    return "";
}

bool contains(const std::vector<Choice>& list, std::int64_t code) {
    return std::any_of(list.begin(), list.end(), [&](const Choice& choice) { return choice.code == code; });
}

std::optional<double> read_amount(std::string_view text) {
    if (common::trim(text).empty()) return 0;
    const auto value = common::parse_number(text);
    if (!value || *value < 0 || *value >= 1e9) return std::nullopt;
    return common::round_decimals(*value, 2);
}

}  // namespace cash
