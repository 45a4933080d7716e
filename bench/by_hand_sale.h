// Item entry, the search panel's list and the save of an invoice, by hand.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "bench/by_hand_engine.h"

namespace bench {

struct HandLine {
    std::int64_t item = 0;
    std::string name;
    double price = 0, factor = 1, quantity = 1;
    int unit = 1;
};

// Does what the till does with the file and nothing else. It reads only the columns that are used, makes no
// receipt, and knows one kind of sale.
class HandSale {
  public:
    // Log lines go to `log`, which is opened and closed for each, as in the program.
    HandSale(HandEngine& engine, std::filesystem::path log);

    // Reads what turns a code or barcode into a line: the barcode, the item with the price of a sale period,
    // the stock for the check, the balance and the display, the batches; before the first line also the sale
    // period.
    HandLine enter(const std::string& code, bool first);

    struct Found {
        std::int64_t code = 0, type = 0, stopped = 0;
        std::string name;
        double stock = 0;
        double prices[6] = {};
    };
    // Finds the items whose name begins with a text, ordered by name, with their stock and prices.
    std::vector<Found> search(const std::string& prefix);

    // Saves a cash sale, statement by statement without a transaction, as the program must. It reads the last
    // shift, the stock of each line, the number, the settings and the batches of each line, claims number and
    // goods and looks at the claims before and after. It writes the header, the lines and the batches, each
    // in a commit of its own. Then one sync, and what the next invoice needs.
    void save(const std::vector<HandLine>& lines);

  private:
    struct Batch {
        std::int64_t row;
        double held;
        std::int64_t expiry;
    };
    std::int64_t open_shift();
    std::int64_t claim(const std::vector<HandLine>& lines);
    std::vector<Batch> batches_of(std::int64_t item);
    void take(const std::vector<Batch>& batches, double quantity);
    void log(const std::string& line);

    HandEngine& engine_;
    std::filesystem::path log_;
    sqlite3_stmt *period_, *barcode_, *card_, *stock_, *expiries_, *found_;
    sqlite3_stmt *shift_, *number_, *settings_, *header_, *line_, *batches_, *take_;
    sqlite3_stmt *claims_, *claim_, *taken_, *release_;
};

}  // namespace bench
