// The upgrade list by hand, when there is nothing to do.
#pragma once

#include <string>
#include <vector>

#include "bench/by_hand_engine.h"

namespace bench {

// Knows from the list's own texts which tables and columns must be there. A run reads the catalogue once,
// looks each of them up, and does what the list does at every start whatever it finds: it makes tmp_acc and
// tmp_item anew and changes the latter's columns, widens and narrows users.perm, looks for rows that its
// updates would change, for barcodes without items, shifts without a drawer and vouchers without a number,
// and syncs.
class HandUpgrade {
  public:
    explicit HandUpgrade(HandEngine& engine);
    // False when something is missing.
    bool run();

  private:
    struct Rebuild {
        std::string table, drop_and_create, with_rows;
    };
    HandEngine& engine_;
    std::vector<std::string> expected_;  // "table" or "table.column", lower case
    std::vector<std::string> rebuilt_;   // tables of the statements that change a column anew at each start
    std::vector<Rebuild> forms_;
    sqlite3_stmt* catalogue_;
    std::vector<sqlite3_stmt*> probes_;
};

}  // namespace bench
