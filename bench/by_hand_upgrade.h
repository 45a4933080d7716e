// The upgrade list by hand, on a shop that is up to date.
#pragma once

#include <string>
#include <vector>

#include "bench/by_hand_engine.h"

namespace bench {

// Takes the tables and columns that must exist from the list's own statements. A run reads the catalogue once
// and looks each of them up. Then it does what the list does at every start: it recreates tmp_acc and
// tmp_item and changes the latter's columns, widens and narrows users.perm, looks for rows that its updates
// would change, for barcodes without items, shifts without a drawer and vouchers without a number, and syncs.
class HandUpgrade {
  public:
    explicit HandUpgrade(HandEngine& engine);
    // Returns false if something is missing.
    bool run();

  private:
    struct Rebuild {
        std::string table, drop_and_create, with_rows;
    };
    HandEngine& engine_;
    std::vector<std::string> expected_;  // "table" or "table.column", lower case
    std::vector<std::string> rebuilt_;   // tables of the statements that change a column at each start
    std::vector<Rebuild> forms_;
    sqlite3_stmt* catalogue_;
    std::vector<sqlite3_stmt*> probes_;
};

}  // namespace bench
