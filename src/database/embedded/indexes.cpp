// Indexes: those that statements make, and the engine's own; and the triggers that watch for orphans.
#include <algorithm>

#include "common/text.h"
#include "database/embedded/definitions.h"
#include "database/embedded/engine.h"
#include "database/embedded/name_index.h"
#include "database/embedded/writer.h"

namespace database::embedded {

namespace {

// An index that the engine creates for statements that read whole tables at every start, for the next number
// of the account invoices and for the discounts of a drawer, whose conditions need a filtered index, and for
// the reports of a period. A server
// would refuse rows for such an index from programs with other settings, so it is not part of the schema.
struct OwnIndex {
    std::string table;
    std::vector<std::string> columns;
    std::string where = {};  // as the translation writes it
    bool folded = false;     // of folded names, for searches (database/embedded/name_index.h)

    std::string name() const {
        return folded ? name_index(table) : index_name(table, "own " + columns.front());
    }
    std::string content() const {
        return folded ? "ts_folded(" + quoted_name(columns.front()) + ")" : name_list(columns);
    }
};

const std::vector<OwnIndex>& own_indexes() {
    static const std::vector<OwnIndex> indexes = {
        {"items", {"num1"}},
        {"items", {"name"}, "", true},
        {"inv_d", {"edate"}},
        {"purdata", {"edate"}},
        {"f_q", {"edate"}},
        {"modify", {"edate"}},
        {"tmp_tran", {"edate"}},
        {"sales", {"pnum", "ctype", "vcode"}, " WHERE \"vcode\" <> (- 1)"},
        {"sales",
         {"stcode", "ptype", "vcode", "ctype", "stype", "date", "time_", "safe", "pdis"},
         " WHERE \"pdis\" <> 0"},
        // The reports of a period read these alone.
        {"sales", {"date", "stcode", "ctype", "vcode", "stype", "user", "time_", "ptot", "pdis", "pnum"}},
        {"saledata", {"date", "stcode", "ctype", "icode", "quan1", "quan", "price", "disc"}},
    };
    return indexes;
}

}  // namespace

void drop_name_indexes(sqlite3* engine) {
    for (const OwnIndex& own : own_indexes()) {
        if (own.folded) execute(engine, "DROP INDEX IF EXISTS " + quoted_name(own.name()));
    }
}

std::string name_list(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : ", ") + quoted_name(name);
    return list;
}

std::string index_name(const std::string& table, const std::string& index) {
    return common::lower_ascii(table) + "." + common::lower_ascii(index);
}

void Definitions::apply(const tsql::CreateIndex& create) {
    const Table& table = changeable(create.table);
    const std::string name = index_name(table.name, create.index);
    if (catalog_.has_index(name)) {
        throw Error(
            "42S11",
            "An index with the name '" + create.index + "' already exists on table '" + table.name + "'.",
            "");
    }
    std::string sql = create.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
    sql += quoted_name(name) + " ON " + quoted_name(table.name) + " (";
    for (std::size_t i = 0; i < create.columns.size(); ++i) {
        const auto& [column, descending] = create.columns[i];
        if (table.find(column) < 0) throw Error("42S22", "Invalid column name '" + column + "'.", "");
        sql += (i == 0 ? "" : ", ") + quoted_name(column) + (descending ? " DESC" : "");
    }
    sql += ")";
    if (create.where) {
        Writer writer(catalog_, values_, pinned_, true);
        sql += " WHERE " + writer.table_condition(table, *create.where);
    }
    execute(engine_, sql);
    catalog_.load_table(create.table);
}

void Definitions::drop_index(const tsql::Drop& drop) {
    const std::string name = index_name(drop.table, drop.name);
    if (!catalog_.has_index(name)) {
        throw Error("42S12", "Cannot drop the index '" + drop.name + "', because it does not exist.", "");
    }
    execute(engine_, "DROP INDEX " + quoted_name(name));
    catalog_.load_table(drop.table);
}

void Definitions::add_own_indexes() {
    for (const OwnIndex& own : own_indexes()) {
        if (const Table* table = catalog_.find(own.table)) add_own_indexes(*table);
    }
    if (const Table* barcode = catalog_.find("barcode")) add_own_indexes(*barcode);
}

void Definitions::add_own_indexes(const Table& table) {
    const std::string lower = common::lower_ascii(table.name);
    bool made = false;
    for (const OwnIndex& own : own_indexes()) {
        const std::string name = own.name();
        const bool fits = std::all_of(own.columns.begin(), own.columns.end(),
                                      [&](const std::string& column) { return table.find(column) >= 0; });
        if (own.table != lower || table.view || !fits || catalog_.has_index(name)) continue;
        execute(engine_, "CREATE INDEX IF NOT EXISTS " + quoted_name(name) + " ON " +
                             quoted_name(table.name) + " (" + own.content() + ")" + own.where);
        made = true;
    }
    if (made) catalog_.load_table(lower);
    if (lower == "items" || lower == "barcode") watch_for_orphans(engine_, catalog_);
}

namespace {

constexpr const char* deletion =
    "DELETE barcode FROM items RIGHT OUTER JOIN barcode ON items.code = barcode.code WHERE "
    "isnull(items.name, '') = ''";

// A table of a shop cannot have a dot in its name, so such names are free for the engine.
constexpr const char* note_table = "own.state";

// A new item never makes an orphan.
constexpr std::pair<const char*, const char*> events[] = {
    {"own.orphans 1", "INSERT ON barcode"},
    {"own.orphans 2", "UPDATE OF code ON barcode"},
    {"own.orphans 3", "DELETE ON items"},
    {"own.orphans 4", "UPDATE OF code, name ON items"},
};

}  // namespace

bool is_orphan_deletion(const tsql::Tokens& statement) {
    static const tsql::Tokens known = tsql::tokenize(deletion, {});
    const auto same = [](const tsql::Token& a, const tsql::Token& b) {
        return a.kind == b.kind && a.text == b.text;
    };
    return statement.values == known.values && std::equal(statement.list.begin(), statement.list.end(),
                                                          known.list.begin(), known.list.end(), same);
}

void watch_for_orphans(sqlite3* engine, Catalog& catalog) {
    const Table* items = catalog.find("items");
    const Table* barcode = catalog.find("barcode");
    if (items == nullptr || barcode == nullptr || items->view || barcode->view || items->find("code") < 0 ||
        items->find("name") < 0 || barcode->find("code") < 0) {
        return;
    }
    if (number(engine,
               "SELECT count(*) FROM sqlite_schema WHERE type = 'trigger' AND name LIKE 'own.orphans _'") ==
        static_cast<std::int64_t>(std::size(events))) {
        return;
    }
    all_or_none(engine, [&] {
        const std::string note = quoted_name(note_table);
        execute(engine, "CREATE TABLE IF NOT EXISTS " + note + " (orphans int); DELETE FROM " + note +
                            "; INSERT INTO " + note + " VALUES (1)");
        for (const auto& [name, event] : events) {
            execute(engine, "CREATE TRIGGER IF NOT EXISTS " + quoted_name(name) + " AFTER " + event +
                                " BEGIN UPDATE " + note + " SET orphans = 1 WHERE orphans = 0; END");
        }
    });
    catalog.load_table(note_table);
}

bool can_have_orphans(sqlite3* engine, const Catalog& catalog) {
    if (catalog.find(note_table) == nullptr) return true;
    return number(engine, "SELECT orphans FROM " + quoted_name(note_table)) != 0;
}

void note_no_orphans(sqlite3* engine) {
    execute(engine, "UPDATE " + quoted_name(note_table) + " SET orphans = 0");
}

}  // namespace database::embedded
