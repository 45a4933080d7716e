#include "sales/entry.h"

#include <algorithm>
#include <map>

#include "common/numbers.h"
#include "common/text.h"
#include "sales/line_editing.h"
#include "sales/messages.h"
#include "signin/permissions.h"

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
        {U'’', 'M'}, {U'ج', '['},      {U'د', ']'},      {U'ك', ';'},      {U'ط', '\''},
        {U'و', ','}, {U'ز', '.'},      {U'ظ', '/'},      {U'ذ', '`'},
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

// The text without invisible characters and surrounding blanks.
std::string visible(std::string_view text) {
    std::u32string seen;
    for (const char32_t c : common::code_points(text))
        if (!is_invisible(c)) seen += c;
    return std::string(common::trim(common::utf8(seen)));
}

bool is_digit(char32_t c) {
    return c >= '0' && c <= '9';
}

bool is_letter(char32_t c) {
    return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z') || (c >= U'\u0621' && c <= U'\u064A') ||
           (c >= U'\uFEF5' && c <= U'\uFEFC');
}

// Returns true for words and numbers apart ("حليب 1 لتر"). A code of letters and digits is in one piece, and
// a scanned one that the shop does not know must be refused, not searched for.
bool reads_like_words(std::string_view text) {
    bool letters = false, digits = false, any_letter = false;
    for (const char32_t c : common::code_points(common::western_digits(text))) {
        if (c == U' ') letters = digits = false;
        letters = letters || is_letter(c);
        digits = digits || is_digit(c);
        any_letter = any_letter || letters;
        if (letters && digits) return false;
    }
    return any_letter;
}

bool is_craftsman_code(std::string_view text) {
    constexpr std::string_view letters = "WwPp";
    return text.size() > 1 && letters.find(text.front()) != letters.npos &&
           common::all_digits(text.substr(1));
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
        entry.name = visible(text.substr(text.find('*') + 1));
    } else if (common::length(entry.text) > longest_code) {
        entry.form = EntryForm::unreadable;
    } else if (entry.text.size() == label_length && entry.text.starts_with("20") &&
               common::all_digits(entry.text)) {
        entry.form = EntryForm::scale_label;
        // Characters 3 to 7 are the item, 8 to 12 the weight in grams, 13 the check digit.
        entry.quantity = common::numeric_value(entry.text.substr(7, 5)) / 1000;
        entry.text = std::to_string(common::parse_integer(entry.text.substr(2, 5)).value_or(0));
    } else if (is_craftsman_code(entry.text)) {
        entry.form = EntryForm::craftsman;
        entry.number = common::parse_integer(std::string_view(entry.text).substr(1)).value_or(0);
    } else {
        entry.form = EntryForm::code;
        if (const std::string typed = visible(text); reads_like_words(typed)) entry.name = typed;
    }
    return entry;
}

Entry chosen_item(std::int64_t code, int unit_level) {
    Entry entry;
    entry.form = EntryForm::chosen_item;
    entry.number = code;
    entry.unit_level = unit_level;
    return entry;
}

bool is_search(database::Connection& connection, const Entry& entry) {
    return entry.form == EntryForm::code && !entry.name.empty() &&
           look_up_item(connection, entry.text).found == Found::nothing;
}

namespace {

bool is_on(const Invoice& invoice, std::int64_t item) {
    return std::any_of(invoice.lines.begin(), invoice.lines.end(),
                       [&](const Line& line) { return line.item_code == item; });
}

// The line that more of the goods entered goes to: of the same unit, because each unit has a price of its
// own, and of the same work line. Goods of the selling store go to a line that another store supplies only if
// there is no other.
Line* line_to_raise(Invoice& invoice, const Line& entered) {
    Line* found = nullptr;
    for (Line& line : invoice.lines) {
        const bool same_unit =
            unit_level_of(line.unit_code) == entered.unit_code && line.factor == entered.factor;
        const bool same_goods =
            line.item_code == entered.item_code && same_unit && line.salver_code == entered.salver_code;
        if (!same_goods || (entered.is_supplied() && line.source_store != entered.source_store)) continue;
        if (found == nullptr || (found->is_supplied() && !line.is_supplied())) found = &line;
    }
    return found;
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
    if (entry.form == EntryForm::chosen_item) {
        const auto item = load_item(connection_, entry.number, entry.unit_level);
        if (!item) return refuse(common::message::wrong_code);
        return enter_found(invoice, *item, entry.quantity, supplier);
    }
    const Lookup lookup = look_up_item(connection_, entry.text);
    if (const auto refusal = lookup_refusal(lookup)) return refuse(*refusal);
    return enter_found(invoice, lookup.item, entry.quantity, supplier);
}

std::optional<std::size_t> ItemEntry::add_general_item(Invoice& invoice, const std::string& name) {
    // Without this right the line can be neither given a price nor saved.
    if (!signin::authorise(session_, prompts_, signin::Action::edit_price)) return std::nullopt;
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
    line.granted.emplace().price = price;
    if (work)
        line.salver_code = work->code;
    else
        line.clearance = is_clearance(item);
    return line;
}

std::optional<std::size_t> ItemEntry::raise(Invoice& invoice, Line& known, const Line& entered,
                                            const std::optional<CraftsmanLine>& work) {
    const double raised = without_noise(known.quantity + entered.quantity);
    if (raised > largest_quantity) return refuse(message::wrong_quantity);
    if (!stock_.line_allows(invoice, known, raised, work)) return std::nullopt;
    known.set_quantity(raised);
    known.below_stock = known.below_stock || entered.below_stock;
    return static_cast<std::size_t>(&known - invoice.lines.data());
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
    }
    if (is_on(invoice, item.code)) {
        const common::Answer answer = prompts_.ask(message::entered_before);
        if (answer == common::Answer::closed) return std::nullopt;
        Line* known = answer == common::Answer::yes ? line_to_raise(invoice, line) : nullptr;
        if (known != nullptr) return raise(invoice, *known, line, work);
    }
    if (!stock_.line_allows(invoice, line, quantity, work)) return std::nullopt;
    if (line.stock_kept) line.balance = available_stock(connection_, item.code, invoice.store) / item.factor;
    invoice.lines.push_back(line);
    return invoice.lines.size() - 1;
}

}  // namespace sales
