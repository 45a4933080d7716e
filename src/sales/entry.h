// What arrives in the item-code field: how a text is read (typed, scanned, or scanned under an Arabic
// keyboard layout), and how it becomes a line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/prompts.h"
#include "database/connection.h"
#include "database/reads.h"
#include "sales/invoice.h"
#include "sales/items.h"
#include "sales/lists.h"
#include "sales/stock_check.h"
#include "signin/session.h"

namespace sales {

// The text as a scanner on a Latin layout would have sent it: with Western digits, Latin letters in place of
// those that the same keys type on the Arabic layout, and without direction marks, control characters and
// surrounding blanks.
std::string normalize_scan(std::string_view text);

enum class EntryForm {
    empty,             // nothing to do
    general,           // "*", with or without a name: an unlisted item
    scale_label,       // 13 digits from "20": item code and weight
    craftsman,         // "W" or "P" and the digits of a craftsman work line
    receipt,           // the barcode of a receipt, which brings that invoice back
    discount_percent,  // "5%": a discount on the whole invoice
    discount_value,    // "5-": the same as a value
    code,              // a barcode or an item code
    quantity,          // "6*": of the code that is to follow
    quantity_of_last,  // "6+": of the line that was entered last
    chosen_item,       // an item chosen from a list, in a unit chosen there
    unreadable,        // nothing that any label or keyboard of a shop produces
};

struct Entry {
    EntryForm form = EntryForm::empty;
    // Normalised. For a scale label it is the item code, for a quantity or discount the number.
    std::string text;
    // As typed: for an unlisted item what follows the "*", for a code that reads like words the whole text.
    std::string name;
    double quantity = 1;  // the weight on a scale label, else the number before "*", or 1
    bool quantity_typed = false;
    std::int64_t number = 0;  // of a craftsman line or of a chosen item
    int unit_level = 1;       // of a chosen item

    bool is_discount() const {
        return form == EntryForm::discount_percent || form == EntryForm::discount_value;
    }
};

// The one interpretation of an entry. Whoever needs to know what was entered asks its result. What a scanner
// sent is a code, whatever sign it ends with.
Entry read_entry(std::string_view text, bool scanned = false);
// The entry of an item that was chosen from a list. No barcode can be mistaken for it.
Entry chosen_item(std::int64_t code, int unit_level);
// Returns true if the entry is words to search for: it reads like words and is no barcode.
bool is_search(database::Connection& connection, const Entry& entry);

// A line that was added or raised, and the stock of its item as it was read for that; a general item has
// none.
struct EnteredLine {
    std::size_t row = 0;
    StockShown stock;
};

// `EnterItem`: one entry becomes a new line, or more of a line that is there. It asks a server twice: for
// what the entry names, and for its stock.
class ItemEntry {
  public:
    ItemEntry(database::Connection& connection, const signin::Session& session, common::Prompts& prompts,
              const Lists& lists, bool raise_equal, Invoice& invoice, const Entry& entry)
        : connection_(connection),
          session_(session),
          prompts_(prompts),
          lists_(lists),
          raise_equal_(raise_equal),
          invoice_(invoice),
          entry_(entry),
          check_(session, prompts) {}

    // Adds the reads of what the entry names; whoever calls runs them before finish(). Returns false after
    // showing why the entry is refused without them.
    bool ask(database::Reads& reads);
    // If `supplier` is not 0, the goods come from that store and its stock decides. Asks if the item is on
    // the invoice already, unless the shop lets equal codes raise their line at once. Returns nothing if the
    // entry was refused, after showing why, or if the question was closed.
    std::optional<EnteredLine> finish(std::int64_t supplier);

  private:
    std::nullopt_t refuse(std::string_view text);
    bool parties_present();
    std::size_t add_general_item();
    std::optional<Item> read_goods(std::int64_t supplier);
    std::optional<std::size_t> enter_found(const Item& item, std::int64_t supplier);
    // Adds the goods entered to a line that holds the same.
    std::optional<std::size_t> raise(Line& known, const Line& entered);
    Line new_line(const Item& item, double price) const;

    database::Connection& connection_;
    const signin::Session& session_;
    common::Prompts& prompts_;
    const Lists& lists_;
    bool raise_equal_;  // without a question
    Invoice& invoice_;
    const Entry& entry_;
    StockCheck check_;

    Named named_;
    std::optional<CraftsmanLine> work_;
    std::optional<audit::Person> approver_;  // of a general item
    ItemStock stock_;
    BatchDates dates_;
    StockShown shown_;
};

}  // namespace sales
