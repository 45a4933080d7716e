#include "database/embedded/catalog.h"

#include <algorithm>

#include "common/text.h"
#include "database/error.h"
#include "database/tsql/parser.h"

namespace database::embedded {

namespace {

// A small query on the engine itself, row by row.
class Rows {
  public:
    Rows(sqlite3* engine, const std::string& sql) {
        if (sqlite3_prepare_v2(engine, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK) {
            throw Error("HY000", sqlite3_errmsg(engine), sql);
        }
    }
    ~Rows() { sqlite3_finalize(statement_); }
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;
    bool next() {
        const int code = sqlite3_step(statement_);
        if (code != SQLITE_ROW && code != SQLITE_DONE) {
            sqlite3* engine = sqlite3_db_handle(statement_);
            const bool damaged = code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
            throw Error(code == SQLITE_BUSY ? "HYT00"
                        : damaged           ? "08001"
                                            : "HY000",
                        sqlite3_errmsg(engine), "");
        }
        return code == SQLITE_ROW;
    }
    std::string text(int column) const {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
        return bytes == nullptr ? std::string() : bytes;
    }
    int integer(int column) const { return sqlite3_column_int(statement_, column); }

  private:
    sqlite3_stmt* statement_ = nullptr;
};

std::shared_ptr<const View> read_view(const std::string& definition) {
    const auto begin = definition.find(view_mark);
    const auto end = definition.find("*/");
    if (begin == definition.npos || end == definition.npos) return nullptr;
    const std::string text = definition.substr(begin + view_mark.size(), end - begin - view_mark.size());
    auto view = std::make_shared<View>();
    view->tokens = tsql::tokenize(text, {});
    std::set<std::size_t> pinned;
    view->query = tsql::Parser(text, view->tokens, pinned).whole_query();
    return view;
}

// The type of a column of the file. Tables that other programs made may have types that no server knows.
Type column_type(std::string written) {
    // The engine reports these in capitals, however they were written.
    if (written == "INT" || written == "REAL" || written == "TEXT") written = common::lower_ascii(written);
    try {
        return tsql::parse_type(written);
    } catch (const Error&) {
        Type type = of_kind(Type::Kind::other);
        type.written = written;
        return type;
    }
}

std::string between(std::string_view text, char quote) {
    std::string quoted(1, quote);
    for (const char c : text) {
        if (c == quote) quoted += quote;
        quoted += c;
    }
    return quoted += quote;
}

}  // namespace

std::string quoted_name(std::string_view name) {
    return between(name, '"');
}

std::string quoted_text(std::string_view text) {
    return between(text, '\'');
}

int Table::find(std::string_view column) const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (common::equal_ignoring_case(columns[i].name, column)) return static_cast<int>(i);
    }
    return -1;
}

const Table* Catalog::find(std::string_view name) const {
    const auto found = tables_.find(common::lower_ascii(name));
    return found == tables_.end() ? nullptr : &found->second;
}

const Table& Catalog::get(std::string_view name) const {
    const Table* table = find(name);
    if (table == nullptr) throw Error("42S02", "Invalid object name '" + std::string(name) + "'.", "");
    return *table;
}

bool Catalog::has_index(std::string_view name) const {
    return indexes_.contains(common::lower_ascii(name));
}

void Catalog::load() {
    tables_.clear();
    indexes_.clear();
    read("");
}

void Catalog::load_table(const std::string& name) {
    const std::string lower = common::lower_ascii(name);
    tables_.erase(lower);
    std::erase_if(indexes_, [&](const auto& entry) { return entry.second == lower; });
    read(" and lower(m.tbl_name) = lower(" + quoted_text(name) + ")");
}

void Catalog::read(const std::string& condition) {
    Rows objects(engine_,
                 "select m.type, m.name, m.sql, m.tbl_name from sqlite_schema m where "
                 "m.type in ('table','view','index') and m.name not like 'sqlite\\_%' escape '\\'" +
                     condition);
    while (objects.next()) {
        if (objects.text(0) == "index") {
            indexes_[common::lower_ascii(objects.text(1))] = common::lower_ascii(objects.text(3));
            continue;
        }
        Table& table = tables_[common::lower_ascii(objects.text(1))];
        table.name = objects.text(1);
        if (objects.text(0) == "view") table.view = read_view(objects.text(2));
    }
    Rows columns(
        engine_,
        "select m.name, p.name, p.type, p.\"notnull\", p.dflt_value, p.pk from sqlite_schema m, "
        "pragma_table_info(m.name) p where m.type in ('table','view') and m.name not like 'sqlite\\_%' "
        "escape '\\'" +
            condition + " order by m.rowid, p.cid");
    std::vector<std::pair<int, std::string>> key;
    Table* table = nullptr;
    const auto finish = [&] {
        std::sort(key.begin(), key.end());
        for (auto& [position, name] : key)
            table->key.push_back(std::move(name));
        key.clear();
    };
    while (columns.next()) {
        Table& of_row = tables_[common::lower_ascii(columns.text(0))];
        if (table != &of_row) finish();
        table = &of_row;
        Column column{columns.text(1), column_type(columns.text(2)), columns.integer(3) != 0,
                      columns.text(4)};
        if (columns.integer(5) > 0) key.emplace_back(columns.integer(5), column.name);
        table->columns.push_back(std::move(column));
    }
    finish();
}

}  // namespace database::embedded
