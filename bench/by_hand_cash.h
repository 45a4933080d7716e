// The cash position, the daily statement and the journal by hand.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "bench/by_hand_engine.h"
#include "common/date_time.h"

namespace bench {

// Reads what the program reads, each sum by a statement of its own. The program's statements are given, so a
// single pass over the invoices for several sums would not be the same work. Every sum uses the same index as
// the program's, with the bounds of its days if it has any.
class HandCash {
  public:
    explicit HandCash(HandEngine& engine);

    struct Position {
        double position = 0, card_sales = 0, uncollected = 0;
    };
    // For every drawer of store 1: its position before a moment, its figures from the start up to the moment.
    std::vector<Position> positions(const common::Moment& start, const common::Moment& until);

    struct JournalLine {
        std::int64_t number = 0;
        std::string kind, salesman, party, time, date, note, user, link, telephone;
        double value = 0, discount = 0;
        std::int64_t customer = 0, ctype = 0, stype = 0, inv_type = 0, shift = 0;
    };
    struct Statement {
        std::vector<double> sums;  // of the day, all drawers together, in the order of `day_sums`
        double brought_forward = 0;
        std::array<double, 10> summary{};  // the invoice count first
        std::vector<JournalLine> journal;
        std::int64_t strays = 0;
    };
    // For every drawer of store 1, with the journal of the store.
    Statement statement(const common::Date& day);

  private:
    struct Sum {
        sqlite3_stmt* statement;
        int first, second;  // the signs of its one or two columns; 0 for one that does not count
    };
    std::vector<JournalLine> journal(const common::Date& day);

    std::vector<std::int64_t> drawers();
    sqlite3_stmt *drawers_, *journal_, *stores_;
    std::vector<Sum> position_, carried_, day_, period_;
    std::vector<sqlite3_stmt*> summary_, strays_;
};

}  // namespace bench
