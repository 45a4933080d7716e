#include "sales/item_entry.h"

#include <algorithm>

#include "sales/item_checks.h"
#include "sales/line_limits.h"
#include "sales/messages.h"
#include "sales/pricing.h"

namespace sales {

namespace {

// The line that more of an item goes to: of the same unit and the same work line if there is one, else any
// line of the item that is not another work line's; none when the item is not on the invoice.
struct Duplicate {
    bool present = false;
    Line* line = nullptr;
};

Duplicate find_duplicate(Invoice& invoice, const Item& item, std::int64_t salver_code) {
    Duplicate duplicate;
    for (Line& line : invoice.lines) {
        if (line.item_code != item.code) continue;
        duplicate.present = true;
        if (line.salver_code != salver_code) continue;
        if (duplicate.line == nullptr ||
            (duplicate.line->unit_code != item.unit_level && line.unit_code == item.unit_level))
            duplicate.line = &line;
    }
    return duplicate;
}

// What a line holds when a quantity of the item's unit is added. A line in another unit takes the same goods
// counted in its own unit, so that the stock stays right whatever barcode was scanned; where that is no
// quantity (a piece on a line of cartons) the goods get a line of their own.
double raised_quantity(const Line& line, const Item& item, double quantity) {
    const bool same_unit = line.unit_code == item.unit_level || !(line.factor > 0);
    return without_noise(line.quantity + (same_unit ? quantity : quantity * item.factor / line.factor));
}

}  // namespace

std::optional<std::size_t> ItemEntry::refuse(std::string_view text) {
    prompts_.message(text);
    return std::nullopt;
}

bool ItemEntry::parties_present(const Invoice& invoice) {
    if (invoice.payment == PaymentOption::account && lists_.account_customers.empty()) {
        prompts_.message(message::add_customers);
        return false;
    }
    if (invoice.payment == PaymentOption::tips && lists_.tips_receivers.empty()) {
        prompts_.message(message::add_tips_customers);
        return false;
    }
    return true;
}

std::optional<std::size_t> ItemEntry::enter(Invoice& invoice, std::string_view text) {
    const Entry entry = read_entry(text);
    if (entry.form == EntryForm::empty) return std::nullopt;
    if (!parties_present(invoice)) return std::nullopt;
    if (entry.form == EntryForm::unreadable) return refuse(message::wrong_code);
    if (entry.form == EntryForm::general) return add_general_item(invoice, entry.name);
    const double quantity = entry.form == EntryForm::scale_label ? entry.quantity : 1;
    // A label printed for an empty scale.
    if (!is_valid_quantity(quantity)) return refuse(message::wrong_quantity);
    if (entry.form == EntryForm::craftsman) return enter_craftsman_line(invoice, entry, quantity);

    const Lookup lookup = look_up(connection_, entry.text);
    switch (lookup.found) {
        case Found::nothing:
            return refuse(message::wrong_code);
        case Found::shared_barcode:
            return refuse(message::shared_barcode);
        case Found::item:
            break;
    }
    return enter_found(invoice, lookup.item, quantity, nullptr);
}

std::optional<std::size_t> ItemEntry::add_general_item(Invoice& invoice, const std::string& name) {
    Line line;
    line.name = name.empty() ? message::general_item : std::string_view(name);
    line.unit_name = unit_name(1);
    invoice.lines.push_back(line);
    return invoice.lines.size() - 1;
}

std::optional<std::size_t> ItemEntry::enter_craftsman_line(Invoice& invoice, const Entry& entry,
                                                           double quantity) {
    const auto work = load_craftsman_line(connection_, entry.number, invoice.is_return());
    if (!work) return refuse(invoice.is_return() ? message::product_not_sold : message::product_sold);
    const auto item = load_item(connection_, work->item, 1);
    if (!item) return refuse(message::wrong_code);
    return enter_found(invoice, *item, quantity, &*work);
}

std::optional<std::size_t> ItemEntry::enter_found(Invoice& invoice, const Item& item, double quantity,
                                                  const CraftsmanLine* work) {
    if (const auto refusal = item_refusal(item, invoice.is_return())) return refuse(*refusal);
    const std::optional<double> price =
        work != nullptr ? work->price : entry_price(item, invoice.price_level);
    // A card without a price at this level would give the goods away unnoticed.
    if (!price || *price <= 0) return refuse(message::set_prices);

    const double base_quantity = quantity * item.factor;
    const bool stock_kept = !item.sale_only;
    bool below_stock = false;
    if (supplier_ != 0) {
        const double needed = base_quantity + held_by_lines(invoice, item.code, supplier_);
        if (!stock_suffices(available_stock(connection_, item.code, supplier_), needed))
            return refuse(message::transfer_store_short);
    } else if (stock_kept && !invoice.is_return()) {
        const StockNeed need = {item.code,
                                item.name,
                                invoice.store,
                                item.factor,
                                std::string(unit_name(item.unit_level)),
                                base_quantity + held_by_lines(invoice, item.code, invoice.store)};
        const StockAnswer answer = stock_.judge(need, message::cannot_sell_now);
        if (answer == StockAnswer::refused) return std::nullopt;
        below_stock = answer == StockAnswer::confirmed;
    }

    const Duplicate duplicate = find_duplicate(invoice, item, work != nullptr ? work->code : 0);
    if (supplier_ == 0 && duplicate.present && prompts_.question(message::entered_before) &&
        duplicate.line != nullptr && is_valid_quantity(raised_quantity(*duplicate.line, item, quantity)))
        return raise_line(invoice, *duplicate.line, item, quantity, below_stock, work);

    if (work != nullptr && !stock_suffices(work->left, quantity + salver_quantity(invoice, work->code)))
        return refuse(message::quantity_not_allowed);
    Line line;
    line.item_code = item.code;
    line.name = item.name;
    line.group = group_name(lists_, item.type);
    line.quantity = quantity;
    line.price = *price;
    line.factor = item.factor;
    line.unit_code = item.unit_level;
    line.unit_name = unit_name(item.unit_level);
    line.unit_cost = item.prices[0].value_or(0);
    line.stock_kept = stock_kept;
    line.below_stock = below_stock;
    if (supplier_ != 0) {
        line.source_kind = SourceKind::other_store;
        line.source_store = supplier_;
    }
    if (stock_kept) line.balance = available_stock(connection_, item.code, invoice.store) / item.factor;
    if (work != nullptr)
        line.salver_code = work->code;
    else
        line.clearance = is_clearance(item);
    invoice.lines.push_back(line);
    return invoice.lines.size() - 1;
}

std::optional<std::size_t> ItemEntry::raise_line(Invoice& invoice, Line& line, const Item& item,
                                                 double quantity, bool below_stock,
                                                 const CraftsmanLine* work) {
    const double raised = raised_quantity(line, item, quantity);
    if (line.returnable && !stock_suffices(*line.returnable, raised))
        return refuse(message::quantity_not_allowed);
    if (work != nullptr && !stock_suffices(work->left, quantity + salver_quantity(invoice, work->code)))
        return refuse(message::quantity_not_allowed);
    // The selling store was judged before the question; another store that supplies the line was not.
    if (line.source_kind == SourceKind::other_store && !invoice.is_return()) {
        const double needed =
            held_by_lines(invoice, item.code, line.source_store, &line) + raised * line.factor;
        if (!stock_suffices(available_stock(connection_, item.code, line.source_store), needed))
            return refuse(message::transfer_store_short);
    }
    line.quantity = raised;
    line.below_stock = line.below_stock || below_stock;
    return static_cast<std::size_t>(&line - invoice.lines.data());
}

}  // namespace sales
