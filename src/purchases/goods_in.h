// The logic of the sheet on which goods are taken in from a supplier or returned to one.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/choice.h"
#include "common/form.h"
#include "common/refusal.h"
#include "common/services.h"
#include "purchases/receipt.h"
#include "purchases/receipt_saving.h"
#include "sales/items.h"

namespace purchases {

struct HeadFields {
    std::optional<std::int64_t> supplier;
    std::string invoice;
    common::Date date;
    std::optional<std::int64_t> store;
};
common::FormTable<HeadFields> head_form();

struct FootFields {
    std::string discount;  // "5%" or a value
    std::string tax;
    std::optional<std::int64_t> drawer;
    std::string note;
    bool operator==(const FootFields&) const = default;
};
common::FormTable<FootFields> foot_form();

// A line as it is typed.
struct LineFields {
    std::string quantity;
    std::optional<std::int64_t> unit;
    std::string price;     // of one unit
    std::string total;     // of the line; if it is changed, the price follows
    std::string discount;  // "5%" or a value
    std::string expiry;
    std::string retail;  // the new price of the unit
    bool operator==(const LineFields&) const = default;
};
common::FormTable<LineFields> line_form();

class GoodsIn {
  public:
    GoodsIn(database::Connection& connection, const signin::Session& session, common::Services services);

    // A document that was left unsaved, if the user wants to go on with it; otherwise it is dropped.
    std::optional<Receipt> left_open();
    // Begins an empty document, or goes on with one. Reads the lists.
    void begin(PurchaseKind kind);
    void begin(Receipt receipt);

    HeadFields head;
    FootFields foot;
    // Takes the typed heads over into the receipt. A supplier that is chosen stays chosen.
    std::optional<common::Refusal> take_head();
    std::optional<common::Refusal> take_foot();

    // Adds an item, or raises its last line of that unit.
    std::optional<common::Refusal> add(const sales::Item& item, double quantity);
    // The line that was added, raised or chosen last.
    std::size_t row = 0;
    LineFields line_fields() const;
    std::optional<common::Refusal> set_line(const LineFields& typed);
    // The units that the line's item comes in; of goods that go back from a receipt the one they came in.
    std::vector<common::Choice> units();
    // Adds a line of the same goods for a batch of another expiry date.
    void add_batch();
    void remove_line();
    // Sets new retail prices by a margin over the cost, for the line or for all lines.
    std::optional<common::Refusal> set_margin(std::string_view percent, int step, bool all_lines);
    // What a unit of a line costs after all discounts and the tax.
    double cost_of(std::size_t line) const;
    // The price that a unit of the line will be sold at; 0 if none is known.
    double retail_of(std::size_t line) const;

    // Keeps the document in a file, so that nothing that was typed is lost.
    void keep() const;
    void forget() const;
    std::optional<common::Refusal> save();
    const std::optional<SavedReceipt>& saved() const { return saved_; }

    const Receipt& receipt() const { return receipt_; }
    void reload_suppliers();
    const std::vector<common::Choice>& suppliers() const { return suppliers_; }
    const std::vector<common::Choice>& stores() const { return stores_; }
    const std::vector<common::Choice>& drawers() const { return drawers_; }

  private:
    std::optional<common::Refusal> check();
    bool confirm();
    bool confirm_names(const std::vector<std::string>& names, std::string_view before,
                       std::string_view after);
    bool confirm_invoice();
    std::vector<std::string> items_lowered_with_retail();
    Line line_of(const sales::Item& item);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    Receipt receipt_;
    std::optional<SavedReceipt> saved_;
    std::vector<common::Choice> suppliers_;
    std::vector<common::Choice> stores_;
    std::vector<common::Choice> drawers_;
};

// The file of the document in work.
std::filesystem::path receipt_draft_file(const signin::Session& session);

}  // namespace purchases
