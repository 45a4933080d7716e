// A temporary folder, with or without a shop, in which tests run tallvex-admin as from the command line.
#pragma once

#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "admin/shop.h"
#include "admin/tool.h"
#include "database/connection.h"
#include "support/services.h"
#include "support/shop.h"

namespace test {

struct Run {
    int code = 0;
    std::string out;
    std::string err;
};

// Every row of a table as one text, independent of the order of the columns.
std::multiset<std::string> rows_of(database::Connection& shop, const std::string& table);

class Workbench {
  public:
    const std::filesystem::path& folder() const { return folder_.path(); }
    std::filesystem::path file(const std::string& name) const { return folder() / name; }

    // Runs one command line in the folder.
    Run run(const std::vector<std::string>& arguments, const std::string& input = {}) {
        return run_in(folder(), arguments, input);
    }

    static Run run_in(const std::filesystem::path& folder, const std::vector<std::string>& arguments,
                      const std::string& input = {}, bool arabic = false) {
        std::ostringstream out;
        std::ostringstream err;
        std::istringstream in(input);
        FixedClock clock;
        clock.moment.time.millisecond = 337;
        admin::Tool tool{out, err, in, folder, clock, nullptr, folder, arabic};
        const int code = admin::run_tool(
            {admin::add_new_shop, admin::add_connect, admin::add_sql, admin::add_users, admin::add_check,
             admin::add_unfinished, admin::add_import_items, admin::add_backup, admin::add_restore,
             admin::add_copy_shop, admin::add_show_receipt, admin::add_settings, admin::add_stamp},
            arguments, tool);
        return {code, out.str(), err.str()};
    }

    // Creates an empty shop, or the demo shop, in the folder. Shops are made once and copied.
    void make_shop(bool demo = false);

    std::unique_ptr<database::Connection> open() {
        return admin::open_place(folder(), admin::read_place(folder()));
    }
    // The first cell of a query as text.
    std::string cell(const std::string& query) {
        return database::text_of(open()->scalar(database::Sql::from_administrator(query)));
    }
    void sql(const std::string& statement) { open()->execute(database::Sql::from_administrator(statement)); }

    void write(const std::string& name, const std::string& text) {
        std::ofstream(file(name), std::ios::binary) << text;
    }

  private:
    TemporaryFolder folder_;
};

}  // namespace test
