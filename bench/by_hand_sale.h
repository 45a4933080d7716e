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

// Does what the till does with the file, and nothing around it: it reads the columns that are used where the
// program's statements read all, makes no receipt, and knows one kind of sale.
class HandSale {
  public:
    // Its log lines go to `log`, opened and closed for each as the program does.
    HandSale(HandEngine& engine, std::filesystem::path log);

    // A code or barcode to a line: the barcode, the card with the price of a sale period, the stock for the
    // check, the balance and the display, the batches; the sale period before the first line of an invoice.
    HandLine enter(const std::string& code, bool first);

    struct Found {
        std::int64_t code = 0, type = 0, stopped = 0;
        std::string name;
        double stock = 0;
        double prices[6] = {};
    };
    // The items whose name begins with a text, in the order of their names, with their stock and prices.
    std::vector<Found> search(const std::string& prefix);

    // A cash sale, statement by statement without a transaction, as the program must write it. Read: the last
    // shift, the stock of each line, the number, the settings, the batches of each line. Written, each in a
    // commit of its own: the header, the lines, batch by batch what is taken. Then one sync, and what the
    // next invoice needs.
    void save(const std::vector<HandLine>& lines);

  private:
    struct Batch {
        std::int64_t row;
        double held;
        std::int64_t expiry;
    };
    std::int64_t open_shift();
    std::vector<Batch> batches_of(std::int64_t item);
    void take(const std::vector<Batch>& batches, double quantity);
    void log(const std::string& line);

    HandEngine& engine_;
    std::filesystem::path log_;
    sqlite3_stmt *period_, *barcode_, *card_, *stock_, *expiries_, *found_;
    sqlite3_stmt *shift_, *number_, *settings_, *header_, *line_, *batches_, *take_;
};

}  // namespace bench
