// What arrives in the item-code field: how a text is read (typed, scanned, or scanned under an Arabic
// keyboard layout), and how it becomes a line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/prompts.h"
#include "database/connection.h"
#include "sales/invoice.h"
#include "sales/items.h"
#include "sales/lists.h"
#include "sales/stock_check.h"
#include "signin/session.h"

namespace sales {

// The text as a scanner on a Latin layout would have sent it: with Western digits, with the Latin letters of
// the keys for those of the Arabic keyboard layout, and without direction marks, control characters and
// surrounding blanks.
std::string normalize_scan(std::string_view text);

enum class EntryForm {
    empty,        // nothing to do
    general,      // "*", with or without a name: an unlisted item
    scale_label,  // 13 digits from "20": item code and weight
    craftsman,    // "W" or "P" and the number of a craftsman work line
    code,         // a barcode or an item code
    unreadable,   // nothing that any label or keyboard of a shop produces
};

struct Entry {
    EntryForm form = EntryForm::empty;
    std::string text;         // normalised; of a scale label: the item code
    std::string name;         // of an unlisted item: what was typed after "*", as typed
    double quantity = 1;      // of a scale label its weight in units, else 1
    std::int64_t number = 0;  // of a craftsman line; 0 if the text after the letter is not a number
};

// The one interpretation of an entry. Whoever needs to know what was entered asks its result.
Entry read_entry(std::string_view text);

// `EnterItem`: one entry becomes a new line, or more of a line that is there.
class ItemEntry {
  public:
    ItemEntry(database::Connection& connection, const signin::Session& session, common::Prompts& prompts,
              const Lists& lists)
        : connection_(connection), prompts_(prompts), lists_(lists), stock_(connection, session, prompts) {}

    // The goods come from another store if `supplier` is not 0: its stock decides, and they get a line of
    // their own. Returns the row that was added or raised; nothing after showing why the entry was refused.
    std::optional<std::size_t> enter(Invoice& invoice, const Entry& entry, std::int64_t supplier);

  private:
    std::optional<std::size_t> refuse(std::string_view text);
    bool parties_present(const Invoice& invoice);
    std::optional<std::size_t> add_general_item(Invoice& invoice, const std::string& name);
    std::optional<std::size_t> enter_found(Invoice& invoice, const Item& item, double quantity,
                                           std::int64_t supplier,
                                           const std::optional<CraftsmanLine>& work = {});
    Line new_line(const Item& item, double price, double quantity,
                  const std::optional<CraftsmanLine>& work) const;

    database::Connection& connection_;
    common::Prompts& prompts_;
    const Lists& lists_;
    StockCheck stock_;
};

}  // namespace sales
