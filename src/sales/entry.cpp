#include "sales/entry.h"

#include <algorithm>
#include <map>

#include "common/numbers.h"
#include "common/text.h"
#include "sales/line_editing.h"
#include "sales/messages.h"

namespace sales {

namespace {

// The width of the column that holds barcodes.
constexpr std::size_t longest_code = 50;
constexpr std::size_t label_length = 13;

// The Arabic (101) layout: the character that each Latin key types, without and with Shift.
const std::map<char32_t, char>& arabic_keys() {
    static const std::map<char32_t, char> keys = {
        {U'ض', 'q'}, {U'ص', 'w'},      {U'ث', 'e'},      {U'ق', 'r'},      {U'ف', 't'},
        {U'غ', 'y'}, {U'ع', 'u'},      {U'ه', 'i'},      {U'خ', 'o'},      {U'ح', 'p'},
        {U'ش', 'a'}, {U'س', 's'},      {U'ي', 'd'},      {U'ب', 'f'},      {U'ل', 'g'},
        {U'ا', 'h'}, {U'ت', 'j'},      {U'ن', 'k'},      {U'م', 'l'},      {U'ئ', 'z'},
        {U'ء', 'x'}, {U'ؤ', 'c'},      {U'ر', 'v'},      {U'ى', 'n'},      {U'ة', 'm'},
        {U'ﻻ', 'b'}, {U'\u064E', 'Q'}, {U'\u064B', 'W'}, {U'\u064F', 'E'}, {U'\u064C', 'R'},
        {U'ﻹ', 'T'}, {U'إ', 'Y'},      {U'‘', 'U'},      {U'÷', 'I'},      {U'×', 'O'},
        {U'؛', 'P'}, {U'\u0650', 'A'}, {U'\u064D', 'S'}, {U'ﻷ', 'G'},      {U'أ', 'H'},
        {U'ـ', 'J'}, {U'،', 'K'},      {U'\u0652', 'X'}, {U'ﻵ', 'B'},      {U'آ', 'N'},
        {U'’', 'M'},
    };
    return keys;
}

// Keys that type two characters on that layout.
struct Pair {
    char32_t second;
    char key;
};
constexpr Pair after_lam[] = {{U'ا', 'b'}, {U'إ', 'T'}, {U'أ', 'G'}, {U'آ', 'B'}};

bool is_invisible(char32_t c) {
    return c < 0x20 || c == 0x7F || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

// The text after the first "*", without invisible characters.
std::string name_after_star(std::string_view text) {
    std::u32string name;
    for (const char32_t c : common::code_points(text.substr(text.find('*') + 1)))
        if (!is_invisible(c)) name += c;
    return std::string(common::trim(common::utf8(name)));
}

bool all_digits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::string normalize_scan(std::string_view text) {
    const std::u32string typed = common::code_points(common::western_digits(text));
    std::u32string seen;
    for (std::size_t i = 0; i < typed.size(); ++i) {
        const char32_t c = typed[i];
        if (is_invisible(c)) continue;
        if (c == U'ل' && i + 1 < typed.size()) {
            const auto pair = std::find_if(std::begin(after_lam), std::end(after_lam),
                                           [&](const Pair& p) { return p.second == typed[i + 1]; });
            if (pair != std::end(after_lam)) {
                seen += static_cast<char32_t>(pair->key);
                ++i;
                continue;
            }
        }
        const auto key = arabic_keys().find(c);
        seen += key != arabic_keys().end() ? static_cast<char32_t>(key->second) : c;
    }
    return std::string(common::trim(common::utf8(seen)));
}

Entry read_entry(std::string_view text) {
    Entry entry;
    // Refused before any work: a pasted book must not hold up the till.
    if (text.size() > 4 * longest_code + 64) {
        entry.form = EntryForm::unreadable;
        return entry;
    }
    entry.text = normalize_scan(text);
    if (entry.text.empty()) return entry;
    if (entry.text.front() == '*') {
        entry.form = EntryForm::general;
        entry.name = name_after_star(text);
    } else if (common::length(entry.text) > longest_code) {
        entry.form = EntryForm::unreadable;
    } else if (entry.text.size() == label_length && entry.text.starts_with("20") && all_digits(entry.text)) {
        entry.form = EntryForm::scale_label;
        // Characters 3 to 7 are the item, 8 to 12 the weight in grams, 13 the check digit.
        entry.quantity = common::numeric_value(entry.text.substr(7, 5)) / 1000;
        entry.text = std::to_string(common::parse_integer(entry.text.substr(2, 5)).value_or(0));
    } else if (const char first = entry.text.front();
               first == 'W' || first == 'w' || first == 'P' || first == 'p') {
        entry.form = EntryForm::craftsman;
        entry.number = common::parse_integer(std::string_view(entry.text).substr(1)).value_or(0);
    } else {
        entry.form = EntryForm::code;
    }
    return entry;
}

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
    if (entry.form == EntryForm::unreadable) return refuse(common::message::wrong_code);
    if (entry.form == EntryForm::general) return add_general_item(invoice, entry.name);
    // A label printed for an empty scale.
    if (!is_valid_quantity(entry.quantity)) return refuse(message::wrong_quantity);
    if (entry.form == EntryForm::craftsman) {
        const auto work = load_craftsman_line(connection_, entry.number, invoice.is_return());
        if (!work) return refuse(invoice.is_return() ? message::product_not_sold : message::product_sold);
        const auto item = load_item(connection_, work->item, 1);
        if (!item) return refuse(common::message::wrong_code);
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
