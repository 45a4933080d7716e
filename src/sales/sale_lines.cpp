#include "sales/sales_desk.h"

#include <algorithm>

#include "common/search.h"
#include "sales/entry.h"
#include "sales/events.h"
#include "sales/line_editing.h"
#include "sales/messages.h"
#include "sales/sale_period.h"

namespace sales {

bool SaleLines::EnterItem(const Entry& entry, std::int64_t supplier) {
    if (entry.form == EntryForm::empty || entry.form == EntryForm::quantity) return false;
    if (entry.form == EntryForm::quantity_of_last) return quick_quantity(entry.text);
    if (entry.form == EntryForm::discount_percent) return CommitDiscountPercent(entry.text);
    if (entry.form == EntryForm::discount_value) return CommitDiscountValue(entry.text);
    return change("enter an item", false, [&] {
        if (frozen() || (supplier != 0 && invoice_.is_return())) return false;
        const bool begins_anew = sale_.is_only_looked_at();
        if (begins_anew) sale_ = empty_sale();
        return enter(entry, supplier, begins_anew);
    });
}

bool SaleLines::is_search(const Entry& entry) {
    return look_up("look for a barcode", false, [&] { return sales::is_search(connection_, entry); });
}

bool SaleLines::EnterItemForRecalled(const Entry& entry) {
    if (entry.form == EntryForm::quantity_of_last) return quick_quantity(entry.text);
    return change("enter an item of a recalled invoice", false, [&] {
        if (!sale_.recalled) {
            services_.prompts.message(message::select_invoice_first);
            return false;
        }
        if (frozen()) return false;
        const bool entered = enter(entry, 0, false);
        sale_.edited = sale_.edited || entered;
        return entered;
    });
}

// Sale periods begin and end while a till is left on: each invoice checks once, before its first line is
// priced. The server's day decides, as when the screen opens, and not a date chosen for the invoice.
bool SaleLines::enter(const Entry& entry, std::int64_t supplier, bool begins_anew) {
    ItemEntry item_entry(connection_, session_, services_.prompts, state_.lists, state_.raise_equal, invoice_,
                         entry);
    database::Reads reads;
    Today today;
    const bool may_enter = item_entry.ask(reads);
    if (!may_enter && !begins_anew) return false;
    if (!sale_.sale_period_checked) ask_today(reads, today);
    if (begins_anew) ask_invoice_number(reads);
    reads.run(connection_);
    if (begins_anew) invoice_.date = today.day;
    if (!sale_.sale_period_checked) {
        if (const auto period = checked_period(today); period != state_.sale_period) {
            fill_period_prices(connection_, period);
            state_.sale_period = period;
        }
        sale_.sale_period_checked = true;
    }
    if (!may_enter) return false;
    const auto entered = item_entry.finish(supplier);
    if (!entered) return false;
    sale_.entered_row = entered->row;
    show_line(entered->row, entered->stock);
    show_net_on_display();
    return true;
}

void SaleLines::show_net_on_display() {
    ShowOnDisplay(services_.devices, display_text(invoice_.net(), {}));
}

// The sale changes only once the stock has been read, so there is nothing to undo.
void SaleLines::select_row(std::size_t row) {
    if (row >= invoice_.lines.size()) return;
    look_up("show the stock", false, [&] {
        sale_.stock = stock_of(row);
        sale_.current_row = row;
        return true;
    });
}

bool SaleLines::begin_edit(std::size_t row, int column) {
    return look_up("open a cell", false, [&] {
        if (row >= invoice_.lines.size() || frozen()) return false;
        return LineEditing(connection_, session_, services_.prompts).may_open(invoice_.lines[row], column);
    });
}

void SaleLines::cancel_edit(std::size_t row) {
    if (row < invoice_.lines.size()) drop_unused(invoice_.lines[row].approvals);
}

bool SaleLines::commit_edit(std::size_t row, int column, std::string_view text) {
    return change("edit a line", false, [&] {
        if (row >= invoice_.lines.size() || frozen()) return false;
        const double former = invoice_.lines[row].quantity;
        const bool accepted =
            LineEditing(connection_, session_, services_.prompts).commit(invoice_, row, column, text);
        note_quantity(session_, sale_, invoice_.lines[row], former);
        sale_.edited = sale_.edited || accepted;
        show_line(row);
        if (accepted) show_net_on_display();
        return accepted;
    });
}

std::optional<std::size_t> SaleLines::last_line() const {
    if (invoice_.lines.empty()) return std::nullopt;
    return std::min(sale_.entered_row.value_or(invoice_.lines.size()), invoice_.lines.size() - 1);
}

bool SaleLines::quick_quantity(std::string_view text) {
    if (const auto row = last_line()) return commit_edit(*row, column::quantity, text);
    services_.prompts.message(message::no_line);
    return false;
}

bool SaleLines::next_unit() {
    return change("change a line's unit", false, [&] {
        if (frozen()) return false;
        if (!sale_.current_row) {
            services_.prompts.message(message::no_line);
            return false;
        }
        const Line former = invoice_.lines[*sale_.current_row];
        if (!LineEditing(connection_, session_, services_.prompts).next_unit(invoice_, *sale_.current_row))
            return false;
        sale_.edited = true;
        RecalcTotals();
        note_unit(session_, sale_, invoice_.lines[*sale_.current_row], former);
        show_net_on_display();
        return true;
    });
}

bool SaleLines::CommitDiscountValue(std::string_view text) {
    return commit_discount(commit_discount_value, text);
}

bool SaleLines::CommitDiscountPercent(std::string_view text) {
    return commit_discount(commit_discount_percent, text);
}

bool SaleLines::commit_discount(bool (*commit)(Invoice&, const signin::Session&, common::Prompts&,
                                               std::string_view),
                                std::string_view text) {
    return change("invoice discount", false, [&] {
        if (frozen()) return false;
        const bool accepted = commit(invoice_, session_, services_.prompts, text);
        sale_.edited = sale_.edited || accepted;
        RecalcTotals();
        return accepted;
    });
}

void SaleLines::delete_line(std::size_t row) {
    change("delete a line", false, [&] {
        if (row >= invoice_.lines.size() || frozen()) return false;
        note_deleted_line(session_, sale_, invoice_.lines[row]);
        invoice_.lines.erase(invoice_.lines.begin() + static_cast<std::ptrdiff_t>(row));
        sale_.edited = true;
        sale_.entered_row.reset();
        const std::size_t left = invoice_.lines.size();
        show_line(left == 0 ? std::nullopt : std::optional<std::size_t>(row < left ? row : left - 1));
        return true;
    });
}

std::optional<SourceItem> SaleLines::source_item(const Entry& entry) {
    using Answer = std::optional<SourceItem>;
    return look_up("find a line's source", Answer(), [&]() -> Answer {
        const auto refuse = [this](std::string_view text) {
            services_.prompts.message(text);
            return std::nullopt;
        };
        if (frozen()) return std::nullopt;
        if (invoice_.is_return()) return refuse(message::no_source_line);
        if (entry.form == EntryForm::empty) {
            if (Answer item = sale_.current_row ? source_of_line(*sale_.current_row) : std::nullopt)
                return item;
            return refuse(message::no_source_line);
        }
        if (entry.form != EntryForm::code && entry.form != EntryForm::scale_label)
            return refuse(message::no_source_line);
        const Lookup lookup = look_up_item(connection_, entry.text);
        if (const auto refusal = lookup_refusal(lookup.found)) return refuse(*refusal);
        const Item& item = lookup.item;
        if (const auto refusal = item_refusal(item, false)) return refuse(*refusal);
        if (item.sale_only) return refuse(message::no_source_line);
        return SourceItem{item.code,   item.name,       entry.quantity,
                          item.factor, item.unit_level, std::string(unit_name(item.unit_level)),
                          std::nullopt};
    });
}

std::optional<SourceItem> SaleLines::source_of_line(std::size_t row) const {
    if (row >= invoice_.lines.size()) return std::nullopt;
    const Line& line = invoice_.lines[row];
    if (!line.moves_stock()) return std::nullopt;
    return SourceItem{*line.item_code, line.name, line.quantity, line.factor, line.unit_code,
                      line.unit_name,  row};
}

void SaleLines::set_supplier(std::size_t row, std::int64_t supplier) {
    if (state_.busy || row >= invoice_.lines.size() || frozen()) return;
    invoice_.lines[row].set_supplier(supplier);
}

std::optional<std::size_t> SaleLines::escape_to_quantity() const {
    if (invoice_.lines.empty() || invoice_.lines.back().quantity != 0) return std::nullopt;
    return invoice_.lines.size() - 1;
}

FoundItems SaleLines::search(const SearchFilters& filters) {
    return look_up("search items", FoundItems(),
                   [&] { return search_items(connection_, state_.lists, filters); });
}

MatchQuery SaleLines::match_query(const Entry& entry) const {
    MatchQuery query{entry.form == EntryForm::code ? entry.name : "", invoice_.price_level, invoice_.store};
    query.popular = state_.popular.matching(common::search_words(query.typed), most_matches);
    return query;
}

std::vector<Match> SaleLines::match(const MatchQuery& query) {
    return look_up("search items", std::vector<Match>(), [&] { return match_items(connection_, query); });
}

std::optional<ItemInfo> SaleLines::item_info(std::int64_t code) {
    using Answer = std::optional<ItemInfo>;
    return look_up("item info", Answer(), [&]() -> Answer {
        const auto line = std::ranges::find(invoice_.lines, code, &Line::item_code);
        const std::string name = line == invoice_.lines.end() ? std::string() : line->name;
        if (!authorise(signin::Action::item_info, {.what = name, .item = code})) return std::nullopt;
        return load_item_info(connection_, code);
    });
}

}  // namespace sales
