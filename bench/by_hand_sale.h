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

    // Saves a cash sale step by step, each step in a transaction with its note, as the program must. It reads
    // the last shift, the number, the settings and the stock and the batches of each line, claims number and
    // goods, looks at the claims before and after, and enters the invoice into the journal. The steps are the
    // header, the lines and the stock; the last transaction removes claim and journal. Then one sync, and
    // what the next invoice needs.
    void save(const std::vector<HandLine>& lines);

  private:
    struct Batch {
        std::int64_t row;
        double held;
        std::int64_t expiry;
    };
    std::int64_t open_shift();
    std::int64_t claim(const std::vector<HandLine>& lines);
    std::string journal_text(const std::vector<HandLine>& lines, std::int64_t number) const;
    std::vector<Batch> batches_of(std::int64_t item);
    // Adds what it took to `changes`.
    void take(const HandLine& line, const std::vector<Batch>& batches, std::string& changes);
    void note(int step, const std::string& text);
    void log(const std::string& line);

    HandEngine& engine_;
    std::filesystem::path log_;
    sqlite3_stmt *period_, *barcode_, *card_, *stock_, *expiries_, *found_;
    sqlite3_stmt *shift_, *number_, *settings_, *header_, *line_, *batches_, *take_;
    sqlite3_stmt *claims_, *claim_, *taken_, *release_;
    sqlite3_stmt *begin_, *commit_, *enter_, *note_, *leave_, *forget_notes_;
};

}  // namespace bench
