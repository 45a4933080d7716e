#include "database/embedded/orphans.h"

#include <algorithm>

#include "database/embedded/engine.h"

namespace database::embedded {

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
