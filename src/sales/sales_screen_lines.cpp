// The sales screen's lines: entering, editing, looking up.
#include "common/numbers.h"
#include "sales/display.h"
#include "sales/invoice_discount.h"
#include "sales/item_entry.h"
#include "sales/line_editing.h"
#include "sales/messages.h"
#include "sales/sales_screen.h"
#include "sales/sales_screen_guard.h"

namespace sales {

using signin::Action;

bool SalesScreen::EnterItem(std::string_view text) {
    if (read_entry(text).form == EntryForm::empty) return false;
    return guarded("enter an item", false, [&] {
        if (frozen()) return false;
        // A receipt brought back only to be looked at makes way for the next customer.
        if (shows_saved_receipt() && !recalled_edited_) {
            reset_invoice();
            invoice_.date = server_date();
            draw_number();
        }
        return enter(text);
    });
}

bool SalesScreen::EnterItemForRecalled(std::string_view text) {
    return guarded("enter an item of a recalled invoice", false, [&] {
        if (!recalled_) {
            services_.prompts.message(message::select_invoice_first);
            return false;
        }
        if (frozen()) return false;
        const bool entered = enter(text);
        recalled_edited_ = recalled_edited_ || entered;
        return entered;
    });
}

bool SalesScreen::enter(std::string_view text, std::int64_t source_store) {
    look_for_sale_period();
    ItemEntry entry(connection_, session_, services_.prompts, lists_);
    entry.supply_from(source_store);
    const auto row = entry.enter(invoice_, text);
    if (!row) return false;
    line_changed(row);
    ShowOnDisplay(sales::display_text(invoice_.net(), 0));
    return true;
}

void SalesScreen::line_changed(std::optional<std::size_t> row) {
    current_row_ = row;
    RecalcTotals();
    refresh_stock();
}

// What the stock display says of the current line; a general item has no stock to speak of.
void SalesScreen::refresh_stock() {
    stock_shown_ = {};
    if (!current_row_ || *current_row_ >= invoice_.lines.size()) return;
    const Line& line = invoice_.lines[*current_row_];
    if (!line.item_code) return;
    stock_shown_.quantity = stock_text(connection_, *line.item_code, invoice_.store);
    stock_shown_.expiries = expiry_texts(connection_, *line.item_code);
}

void SalesScreen::select_row(std::size_t row) {
    show_stock(row);
}

void SalesScreen::show_stock(std::size_t row) {
    if (row >= invoice_.lines.size()) return;
    guarded("show the stock", false, [&] {
        current_row_ = row;
        refresh_stock();
        return true;
    });
}

bool SalesScreen::begin_edit(std::size_t row, int column) {
    return guarded("open a cell", false, [&] {
        if (row >= invoice_.lines.size() || frozen()) return false;
        return LineEditing(connection_, session_, services_.prompts).may_open(invoice_.lines[row], column);
    });
}

bool SalesScreen::commit_edit(std::size_t row, int column, std::string_view text) {
    return guarded("edit a line", false, [&] {
        if (row >= invoice_.lines.size() || frozen()) return false;
        const bool taken =
            LineEditing(connection_, session_, services_.prompts).commit(invoice_, row, column, text);
        recalled_edited_ = recalled_edited_ || taken;
        line_changed(row);
        if (taken) ShowOnDisplay(sales::display_text(invoice_.net(), 0));
        return taken;
    });
}

bool SalesScreen::quick_quantity(std::string_view text) {
    if (invoice_.lines.empty()) return false;
    return commit_edit(invoice_.lines.size() - 1, column::quantity, text);
}

bool SalesScreen::CommitDiscountValue(std::string_view text) {
    return guarded("invoice discount", false, [&] {
        if (frozen()) return false;
        const bool taken = commit_discount_value(invoice_, session_, services_.prompts, text);
        recalled_edited_ = recalled_edited_ || taken;
        RecalcTotals();
        return taken;
    });
}

bool SalesScreen::CommitDiscountPercent(std::string_view text) {
    return guarded("invoice discount", false, [&] {
        if (frozen()) return false;
        const bool taken = commit_discount_percent(invoice_, session_, services_.prompts, text);
        recalled_edited_ = recalled_edited_ || taken;
        RecalcTotals();
        return taken;
    });
}

void SalesScreen::delete_line(std::size_t row) {
    guarded("delete a line", false, [&] {
        if (row >= invoice_.lines.size() || frozen()) return false;
        invoice_.lines.erase(invoice_.lines.begin() + static_cast<std::ptrdiff_t>(row));
        recalled_edited_ = true;
        const std::size_t left = invoice_.lines.size();
        line_changed(left == 0 ? std::nullopt : std::optional<std::size_t>(row < left ? row : left - 1));
        return true;
    });
}

void SalesScreen::set_line_source(std::size_t row, SourceKind kind, std::int64_t source_store) {
    if (busy_ || row >= invoice_.lines.size() || frozen()) return;
    Line& line = invoice_.lines[row];
    line.source_kind = kind;
    line.source_store = kind == SourceKind::other_store ? source_store : 0;
}

std::optional<std::size_t> SalesScreen::escape_to_quantity() const {
    if (invoice_.lines.empty() || invoice_.lines.back().quantity != 0) return std::nullopt;
    return invoice_.lines.size() - 1;
}

std::vector<FoundItem> SalesScreen::search(const SearchFilters& filters) {
    return guarded("search items", std::vector<FoundItem>(),
                   [&] { return search_items(connection_, lists_, filters); });
}

std::optional<ItemInfo> SalesScreen::item_info(std::int64_t code) {
    return guarded("item info", std::optional<ItemInfo>(), [&]() -> std::optional<ItemInfo> {
        if (!authorise(Action::item_info)) return std::nullopt;
        return load_item_info(connection_, code);
    });
}

}  // namespace sales
