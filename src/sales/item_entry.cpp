#include "sales/item_entry.h"

#include "sales/line_editing.h"
#include "sales/messages.h"

namespace sales {

namespace {

// The line that more of an item goes to: one of the same unit and the same work line if there is one, else
// any line of the item that is not another work line's.
struct Duplicate {
    bool present = false;  // the item is on the invoice
    Line* line = nullptr;
};

Duplicate find_duplicate(Invoice& invoice, const Line& entered) {
    Duplicate duplicate;
    for (Line& line : invoice.lines) {
        if (line.item_code != entered.item_code) continue;
        duplicate.present = true;
        if (line.salver_code != entered.salver_code) continue;
        if (duplicate.line == nullptr ||
            (duplicate.line->unit_code != entered.unit_code && line.unit_code == entered.unit_code))
            duplicate.line = &line;
    }
    return duplicate;
}

// What a line holds once the goods entered are added. A line in another unit takes the same goods counted in
// its own unit, so that the stock stays right whatever barcode was scanned. If that is no quantity (a piece
// on a line of cartons), the goods get a line of their own.
double raised_quantity(const Line& line, const Line& entered) {
    const bool same_unit = line.unit_code == entered.unit_code || !(line.factor > 0);
    const double added = same_unit ? entered.quantity : entered.base_quantity() / line.factor;
    return without_noise(line.quantity + added);
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

std::optional<std::size_t> ItemEntry::enter(Invoice& invoice, const Entry& entry, std::int64_t supplier) {
    if (entry.form == EntryForm::empty || !parties_present(invoice)) return std::nullopt;
    if (entry.form == EntryForm::unreadable) return refuse(message::wrong_code);
    if (entry.form == EntryForm::general) return add_general_item(invoice, entry.name);
    // A label printed for an empty scale.
    if (!is_valid_quantity(entry.quantity)) return refuse(message::wrong_quantity);
    if (entry.form == EntryForm::craftsman) {
        const auto work = load_craftsman_line(connection_, entry.number, invoice.is_return());
        if (!work) return refuse(invoice.is_return() ? message::product_not_sold : message::product_sold);
        const auto item = load_item(connection_, work->item, 1);
        if (!item) return refuse(message::wrong_code);
        return enter_found(invoice, *item, entry.quantity, supplier, work);
    }
    const Lookup lookup = look_up_item(connection_, entry.text);
    if (const auto refusal = lookup_refusal(lookup)) return refuse(*refusal);
    return enter_found(invoice, lookup.item, entry.quantity, supplier);
}

std::optional<std::size_t> ItemEntry::add_general_item(Invoice& invoice, const std::string& name) {
    Line line;
    line.name = name.empty() ? message::general_item : std::string_view(name);
    line.unit_name = unit_name(1);
    invoice.lines.push_back(line);
    return invoice.lines.size() - 1;
}

Line ItemEntry::new_line(const Item& item, double price, double quantity,
                         const std::optional<CraftsmanLine>& work) const {
    Line line;
    line.item_code = item.code;
    line.name = item.name;
    line.group = group_name(lists_, item.type);
    line.quantity = quantity;
    line.price = price;
    line.factor = item.factor;
    line.unit_code = item.unit_level;
    line.unit_name = unit_name(item.unit_level);
    line.unit_cost = item.prices[0].value_or(0);
    line.stock_kept = !item.sale_only;
    if (work)
        line.salver_code = work->code;
    else
        line.clearance = is_clearance(item);
    return line;
}

std::optional<std::size_t> ItemEntry::enter_found(Invoice& invoice, const Item& item, double quantity,
                                                  std::int64_t supplier,
                                                  const std::optional<CraftsmanLine>& work) {
    if (const auto refusal = item_refusal(item, invoice.is_return())) return refuse(*refusal);
    const std::optional<double> price = work ? work->price : entry_price(item, invoice.price_level);
    // A card without a price at this level would give the goods away unnoticed.
    if (!price || *price <= 0) return refuse(message::set_prices);

    Line line = new_line(item, *price, quantity, work);
    line.set_supplier(supplier);
    if (supplier == 0) {
        const StockAnswer answer =
            stock_.selling_store_allows(invoice, line, quantity, message::cannot_sell_now);
        if (answer == StockAnswer::refused) return std::nullopt;
        line.below_stock = answer == StockAnswer::confirmed;

        const Duplicate duplicate = find_duplicate(invoice, line);
        if (duplicate.present && prompts_.question(message::entered_before) && duplicate.line != nullptr) {
            Line& known = *duplicate.line;
            const double raised = raised_quantity(known, line);
            if (is_valid_quantity(raised)) {
                if (!stock_.line_allows(invoice, known, raised, work)) return std::nullopt;
                known.quantity = raised;
                known.below_stock = known.below_stock || line.below_stock;
                return static_cast<std::size_t>(&known - invoice.lines.data());
            }
        }
    }
    if (!stock_.line_allows(invoice, line, quantity, work)) return std::nullopt;
    if (line.stock_kept) line.balance = available_stock(connection_, item.code, invoice.store) / item.factor;
    invoice.lines.push_back(line);
    return invoice.lines.size() - 1;
}

}  // namespace sales
