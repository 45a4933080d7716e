#include "backup/contents.h"

#include <sqlite3.h>

#include <algorithm>
#include <memory>

#include "common/numbers.h"
#include "database/error.h"

namespace backup {

using database::Connection;
using database::Sql;

namespace {

// Triggers and views besides the view [user] and the engine's own triggers, each of one statement.
constexpr const char* strangers =
    "select type, name, tbl_name from sqlite_schema where type in ('trigger','view')"
    " and not (type = 'view' and lower(name) = 'user')"
    " and not (type = 'trigger' and name like 'own.orphans _'"
    " and sql like '% BEGIN UPDATE % SET orphans = 1 WHERE orphans = 0; END'"
    " and length(sql) = length(replace(sql,';','')) + 1)";

void name_strangers(const std::filesystem::path& file, std::vector<std::string>& found) {
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(file.c_str(), &raw, SQLITE_OPEN_READONLY, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> engine(raw, sqlite3_close_v2);
    const auto take = [](void* list, int, char** cells, char**) {
        const std::string type = cells[0], name = cells[1], table = cells[2];
        static_cast<std::vector<std::string>*>(list)->push_back(
            type == "view" ? "the view " + name +
                                 " is not the program's; drop it unless you made it: tallvex-admin sql "
                                 "\"drop view [" +
                                 name + "]\""
                           : "the trigger " + name + " on " + table +
                                 " is not the program's and changes what tills write; "
                                 "drop it: tallvex-admin sql \"drop trigger [" +
                                 name + "]\"");
        return 0;
    };
    if (opened != SQLITE_OK || sqlite3_exec(raw, strangers, take, &found, nullptr) != SQLITE_OK)
        throw database::Error("HY000", sqlite3_errmsg(raw), strangers);
}

// The most characters of a column of texts; 0 for another column or one without a limit.
std::int64_t width_of(const std::string& type) {
    const auto open = type.find("char(");
    if (open == type.npos) return 0;
    const auto digits = type.substr(open + 5, type.find(')') - open - 5);
    return common::parse_integer(digits).value_or(0);
}

void name_long_texts(Connection& connection, const std::string& table, std::vector<std::string>& found) {
    const auto shape = connection.describe(table);
    std::vector<std::size_t> texts;
    std::string longest;
    for (std::size_t i = 0; i < shape.columns.size(); ++i) {
        if (width_of(shape.types[i]) == 0) continue;
        longest += (texts.empty() ? "" : ", ") + std::string("max(len([") + shape.columns[i] + "])) as w" +
                   std::to_string(texts.size());
        texts.push_back(i);
    }
    if (texts.empty()) return;
    const auto rows =
        connection.query(Sql::from_administrator("select " + longest + " from [" + table + "]"));
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::int64_t width = width_of(shape.types[texts[i]]);
        const auto& cell = rows.front().cells()[i];
        if (database::is_null(cell) || database::integer_of(cell) <= width) continue;
        const std::string& column = shape.columns[texts[i]];
        found.push_back("the table " + table + " has texts of up to " +
                        std::to_string(database::integer_of(cell)) + " characters in " + column +
                        ", which takes " + std::to_string(width) +
                        "; shorten them: tallvex-admin sql \"select * from [" + table + "] where len([" +
                        column + "]) > " + std::to_string(width) + "\" shows them");
    }
}

}  // namespace

std::vector<std::string> strange_contents(Connection& connection, const std::filesystem::path& file) {
    std::vector<std::string> found;
    name_strangers(file, found);
    for (const std::string& table : connection.tables())
        name_long_texts(connection, table, found);
    return found;
}

}  // namespace backup
