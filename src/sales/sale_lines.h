// The lines of the invoice being rung up: entering, editing and deleting them, and looking items up. Rows are
// counted from 0; the grid shows row 0 as number 1.
#pragma once

#include "sales/entry.h"
#include "sales/items.h"
#include "sales/sale.h"
#include "sales/search.h"

namespace sales {

// An item for which a store is chosen that supplies it.
struct SourceItem {
    std::int64_t code = 0;
    std::string name;
    double quantity = 1;  // in the unit
    double factor = 1;    // base units in it
    int unit_code = 1;
    std::string unit_name;
    std::optional<std::size_t> row;  // its line; none for an item that is not entered yet
};

class SaleLines : DeskPart {
  public:
    explicit SaleLines(DeskState& state) : DeskPart(state) {}

    // Enter in the item-code field. A `supplier` is another store that the goods come from; the selling store
    // need not hold them. Returns true if a line was added or raised; it is then the current row.
    bool EnterItem(const Entry& entry, std::int64_t supplier = 0);
    // The second field, for lines of a recalled invoice.
    bool EnterItemForRecalled(const Entry& entry);
    // Makes a line the current one and shows its stock.
    void select_row(std::size_t row);
    // Returns true if the cell opens for editing, else false after showing why.
    bool begin_edit(std::size_t row, int column);
    // Commits a cell of columns 4 to 7. Returns false after showing why the value was refused.
    bool commit_edit(std::size_t row, int column, std::string_view text);
    // The pop-up field for the last line's quantity.
    bool quick_quantity(std::string_view text);
    bool CommitDiscountValue(std::string_view text);
    bool CommitDiscountPercent(std::string_view text);
    void delete_line(std::size_t row);

    // What the line-source dialog opens for: the item of the entry, or the current line's for an empty entry.
    // Returns nothing, after saying so, if another store cannot supply it.
    std::optional<SourceItem> source_item(const Entry& entry);
    // Marks a line as supplied from another store; 0 is the selling store.
    void set_supplier(std::size_t row, std::int64_t supplier);

    // Where Esc goes: the last line's quantity cell (its value shown as 1 for overtyping) if that quantity is
    // 0, otherwise the item-code field (nothing).
    std::optional<std::size_t> escape_to_quantity() const;

    std::vector<FoundItem> search(const SearchFilters& filters);
    std::optional<ItemInfo> item_info(std::int64_t code);

  private:
    void check_sale_period();
    bool enter(const Entry& entry, std::int64_t supplier);
    bool commit_discount(bool (*commit)(Invoice&, const signin::Session&, common::Prompts&, std::string_view),
                         std::string_view text);
    void show_net_on_display();
    std::optional<SourceItem> source_of_line(std::size_t row) const;
};

}  // namespace sales
