#include "sales/entry.h"

#include <algorithm>

#include "common/keyboard_layout.h"
#include "common/numbers.h"
#include "common/text.h"
#include "sales/invoice_key.h"
#include "sales/line_editing.h"
#include "sales/messages.h"
#include "signin/permissions.h"

namespace sales {

namespace {

// The width of the column that holds barcodes.
constexpr std::size_t longest_code = 50;
constexpr std::size_t label_length = 13;

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

constexpr std::string_view number_characters = "0123456789.";

// The entry after "6*".
Entry with_quantity(std::string_view number, std::string_view rest, bool scanned) {
    Entry entry = read_entry(rest, scanned);
    const bool may_have_one = entry.form == EntryForm::empty || entry.form == EntryForm::code ||
                              entry.form == EntryForm::craftsman || entry.form == EntryForm::scale_label;
    if (entry.form == EntryForm::empty) entry.form = EntryForm::quantity;
    if (!may_have_one || entry.quantity_typed) entry.form = EntryForm::unreadable;
    entry.quantity_typed = true;
    if (entry.form != EntryForm::scale_label) entry.quantity = common::numeric_value(number);
    return entry;
}

// What a number means with this sign behind it.
EntryForm discount_form(std::string_view sign) {
    if (sign == "%" || sign == "٪") return EntryForm::discount_percent;
    return sign == "-" ? EntryForm::discount_value : EntryForm::code;
}

// Turns "5%" and "5-" into a discount; other entries stay as they are.
void read_discount(Entry& entry) {
    const std::string_view text = entry.text;
    const auto end = text.find_first_not_of(number_characters);
    if (end == 0 || end == text.npos) return;
    const EntryForm form = discount_form(text.substr(end));
    if (form == EntryForm::code) return;
    entry.form = form;
    entry.text.resize(end);
}

}  // namespace

std::string normalize_scan(std::string_view text) {
    return common::on_latin_layout(common::western_digits(visible(text)));
}

Entry read_entry(std::string_view text, bool scanned) {
    Entry entry;
    // Refused before any work: a pasted book must not hold up the till.
    if (text.size() > 4 * longest_code + 64) {
        entry.form = EntryForm::unreadable;
        return entry;
    }
    entry.text = normalize_scan(text);
    if (entry.text.empty()) return entry;
    const auto number = entry.text.find_first_not_of(number_characters);
    if (number != 0 && number != entry.text.npos) {
        if (entry.text[number] == '*')
            return with_quantity(entry.text.substr(0, number), text.substr(text.find('*') + 1), scanned);
        if (entry.text.substr(number) == "+" && !scanned) {
            entry.form = EntryForm::quantity_of_last;
            entry.text.resize(number);
            return entry;
        }
    }
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
    } else if (read_receipt_code(entry.text)) {
        entry.form = EntryForm::receipt;
    } else if (is_craftsman_code(entry.text)) {
        entry.form = EntryForm::craftsman;
        entry.number = common::parse_integer(std::string_view(entry.text).substr(1)).value_or(0);
    } else {
        entry.form = EntryForm::code;
        if (const std::string typed = visible(text); reads_like_words(typed)) entry.name = typed;
        if (!scanned) read_discount(entry);
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

using database::Result;

bool is_on(const Invoice& invoice, std::int64_t item) {
    return std::any_of(invoice.lines.begin(), invoice.lines.end(),
                       [&](const Line& line) { return line.item_code == item; });
}

// The line to which more of the same goods is added. It has the same unit, because each unit has its own
// price, and the same work line. A line supplied by another store is taken for goods of the selling store
// only if there is no other.
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

std::nullopt_t ItemEntry::refuse(std::string_view text) {
    prompts_.message(text);
    return std::nullopt;
}

bool ItemEntry::parties_present() {
    if (invoice_.payment == PaymentOption::account && lists_.account_customers.empty()) {
        prompts_.message(message::add_customers);
        return false;
    }
    if (invoice_.payment == PaymentOption::tips && lists_.tips_receivers.empty()) {
        prompts_.message(message::add_tips_customers);
        return false;
    }
    return true;
}

bool ItemEntry::ask(database::Reads& reads) {
    const auto refused = [this](std::string_view text) {
        prompts_.message(text);
        return false;
    };
    if (entry_.form == EntryForm::empty || !parties_present()) return false;
    if (entry_.form == EntryForm::unreadable || entry_.form == EntryForm::receipt || entry_.is_discount())
        return refused(common::message::wrong_code);
    if (entry_.form == EntryForm::scale_label && entry_.quantity_typed)
        return refused(message::label_has_quantity);
    // Without this right the line could be neither priced nor saved.
    if (entry_.form == EntryForm::general) {
        const auto permit =
            signin::authorise(session_, prompts_, signin::Action::edit_price, signin::denied,
                              common::Icon::critical, {.what = std::string(message::general_item)});
        approver_ = permit.approver;
        return permit;
    }
    // A label printed for an empty scale.
    if (!is_valid_quantity(entry_.quantity)) return refused(message::wrong_quantity);
    if (entry_.form == EntryForm::craftsman) {
        const bool is_return = invoice_.is_return();
        reads.add(craftsman_statement(entry_.number, is_return), [this, is_return](const Result& rows) {
            work_ = craftsman_line_of(rows, is_return);
            if (work_) named_ = {Found::item, work_->item};
        });
    } else if (entry_.form == EntryForm::chosen_item) {
        named_ = {Found::item, entry_.number, entry_.unit_level};
    } else {
        reads.add(barcode_statement(entry_.text),
                  [this](const Result& rows) { named_ = named_by(rows, entry_.text); });
    }
    return true;
}

std::optional<EnteredLine> ItemEntry::finish(std::int64_t supplier) {
    if (entry_.form == EntryForm::general) return EnteredLine{add_general_item(), {}};
    if (entry_.form == EntryForm::craftsman && !work_)
        return refuse(invoice_.is_return() ? message::product_not_sold : message::product_sold);
    if (const auto refusal = lookup_refusal(named_.found)) return refuse(*refusal);
    const std::optional<Item> item = read_goods(supplier);
    if (!item) return refuse(common::message::wrong_code);
    const auto row = enter_found(*item, supplier);
    return row ? std::optional(EnteredLine{*row, std::move(shown_)}) : std::nullopt;
}

std::optional<Item> ItemEntry::read_goods(std::int64_t supplier) {
    std::optional<Item> item;
    database::Reads reads;
    reads.add(item_statement(named_.item),
              [&](const Result& cards) { item = item_of(cards, named_.unit_level); });
    stock_.ask(reads, named_.item, stores_asked(invoice_, named_.item, supplier));
    dates_.ask(reads, {{{named_.item, supplier}, 0}});
    reads.add(expiries_statement(named_.item),
              [&](const Result& rows) { shown_ = stock_shown(stock_.sum(invoice_.store), rows); });
    reads.run(connection_);
    return item;
}

std::size_t ItemEntry::add_general_item() {
    Line line;
    line.name = entry_.name.empty() ? message::general_item : std::string_view(entry_.name);
    line.unit_name = unit_name(1);
    if (approver_) approve(line.approvals, {signin::Action::edit_price, *approver_});
    invoice_.lines.push_back(line);
    return invoice_.lines.size() - 1;
}

Line ItemEntry::new_line(const Item& item, double price) const {
    Line line;
    line.item_code = item.code;
    line.name = item.name;
    line.group = group_name(lists_, item.type);
    line.quantity = entry_.quantity;
    line.price = price;
    line.factor = item.factor;
    line.unit_code = item.unit_level;
    line.unit_name = unit_name(item.unit_level);
    line.unit_cost = item.prices[0].value_or(0);
    line.stock_kept = !item.sale_only;
    line.granted.emplace().price = price;
    if (work_)
        line.salver_code = work_->code;
    else
        line.clearance = is_clearance(item);
    return line;
}

std::optional<std::size_t> ItemEntry::raise(Line& known, const Line& entered) {
    const double raised = without_noise(known.quantity + entered.quantity);
    if (raised > largest_quantity) return refuse(message::wrong_quantity);
    if (!check_.line_allows(invoice_, known, raised, stock_, work_)) return std::nullopt;
    known.set_quantity(raised);
    known.below_stock = known.below_stock || entered.below_stock;
    check_.keep_approval(known.approvals, raised);
    return static_cast<std::size_t>(&known - invoice_.lines.data());
}

std::optional<std::size_t> ItemEntry::enter_found(const Item& item, std::int64_t supplier) {
    if (const auto refusal = item_refusal(item, invoice_.is_return())) return refuse(*refusal);
    const std::optional<double> price = work_ ? work_->price : entry_price(item, invoice_.price_level);
    // A card without a price at this level would give the goods away unnoticed.
    if (!price || *price <= 0) return refuse(message::set_prices);

    Line line = new_line(item, *price);
    line.set_supplier(supplier);
    if (supplier == 0) {
        const StockAnswer answer =
            check_.selling_store_allows(invoice_, line, line.quantity, stock_, message::cannot_sell_now);
        if (answer == StockAnswer::refused) return std::nullopt;
        line.below_stock = answer == StockAnswer::confirmed;
        check_.keep_approval(line.approvals, line.quantity);
    }
    if (!check_.dates_allow(invoice_, line, dates_)) return std::nullopt;
    if (is_on(invoice_, item.code)) {
        Line* known = line_to_raise(invoice_, line);
        // With a scale label, the same bag may have been scanned twice.
        const bool at_once = raise_equal_ && known != nullptr && entry_.form != EntryForm::scale_label;
        const common::Answer answer = at_once ? common::Answer::yes : prompts_.ask(message::entered_before);
        if (answer == common::Answer::closed) return std::nullopt;
        if (answer == common::Answer::yes && known != nullptr) return raise(*known, line);
    }
    if (!check_.line_allows(invoice_, line, line.quantity, stock_, work_)) return std::nullopt;
    if (line.stock_kept) line.balance = stock_.in(invoice_.store) / item.factor;
    invoice_.lines.push_back(line);
    return invoice_.lines.size() - 1;
}

}  // namespace sales
