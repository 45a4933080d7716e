#include "admin/workbench.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace test {

namespace fs = std::filesystem;

namespace {

// Tests must not use the folder or the password of a real shop.
const int forgotten = unsetenv("TALLVEX_HOME") + unsetenv("TALLVEX_SA_PASSWORD");

const fs::path& model(bool demo) {
    static const TemporaryFolder folders[2];
    static bool made[2] = {false, false};
    const fs::path& folder = folders[demo ? 1 : 0].path();
    if (made[demo ? 1 : 0]) return folder;
    const Run run = demo ? Workbench::run_in(folder, {"new-shop", ".", "--demo"})
                         : Workbench::run_in(folder, {"new-shop", ".", "--ask-password"}, "1\n");
    if (run.code != 0) throw std::runtime_error("new-shop failed: " + run.err);
    made[demo ? 1 : 0] = true;
    return folder;
}

}  // namespace

std::multiset<std::string> rows_of(database::Connection& shop, const std::string& table) {
    std::multiset<std::string> rows;
    auto columns = shop.describe(table).columns;
    std::ranges::sort(columns);
    for (const auto& row : shop.query(database::Sql::from_administrator("select * from [" + table + "]"))) {
        std::string text;
        for (const std::string& name : columns)
            text += name + "=" + (row.null(name) ? "\x01" : row.text(name)) + ";";
        rows.insert(text);
    }
    return rows;
}

void Workbench::make_shop(bool demo) {
    fs::copy(model(demo), folder(), fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

}  // namespace test
