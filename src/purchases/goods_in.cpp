#include "purchases/goods_in.h"

#include <algorithm>

#include "accounts/parties.h"
#include "common/files.h"
#include "common/messages.h"
#include "common/numbers.h"
#include "common/random.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/choices.h"
#include "purchases/messages.h"
#include "purchases/new_prices.h"
#include "purchases/typed_line.h"
#include "sales/draft.h"
#include "sales/line_editing.h"
#include "sales/stock_movement.h"
#include "signin/permissions.h"

namespace purchases {

using common::Amount;
using common::FieldKind;
using common::Refusal;
using database::quoted;
using database::Sql;

namespace {

constexpr common::FormField<HeadFields> head_fields[] = {
    // supplier, the supplier's invoice number, date, store
    {&HeadFields::supplier, {"receipt_supplier", "ال&مورد", FieldKind::choice, {0, 0, 2}}},
    {&HeadFields::invoice, {"receipt_invoice", "رقم فا&تورة المورد", FieldKind::digits, {0, 2}}},
    {&HeadFields::date, {"receipt_date", "الت&اريخ", FieldKind::date, {0, 3}}},
    {&HeadFields::store, {"receipt_store", "الم&خزن", FieldKind::choice, {0, 4}}},
};

constexpr common::FormField<FootFields> foot_fields[] = {
    // discount on the whole, tax, paid in cash from, note
    {&FootFields::discount, {"receipt_discount", "خصم ال&فاتورة", FieldKind::amount, {0, 0}}},
    {&FootFields::tax, {"receipt_tax", "ال&ضريبة", FieldKind::amount, {0, 1}}},
    {&FootFields::drawer, {"receipt_drawer", "تسدد &نقدا · الخزينة", FieldKind::choice, {0, 2}}},
    {&FootFields::note, {"receipt_note", "م&لاحظات", FieldKind::text, {0, 3}, "notes"}},
};

constexpr common::FormField<LineFields> line_fields_table[] = {
    // quantity, unit, cost of a unit, total of the line, discount, expiry, new selling price
    {&LineFields::quantity, {"line_quantity", "ال&كمية", FieldKind::amount, {0, 0}}},
    {&LineFields::unit, {"line_unit", "ال&وحدة", FieldKind::choice, {0, 1}}},
    {&LineFields::price, {"line_price", "تكلفة الوح&دة", FieldKind::amount, {0, 2}}},
    {&LineFields::total, {"line_total", "أو قيم&ة السطر", FieldKind::amount, {0, 3}}},
    {&LineFields::discount, {"line_discount", "الخ&صم", FieldKind::amount, {0, 4}}},
    {&LineFields::expiry, {"line_expiry", "الصلا&حية", FieldKind::digits, {0, 5}}},
    {&LineFields::retail, {"line_retail", "سعر ال&بيع الجديد", FieldKind::amount, {0, 6}}},
};

constexpr int longest_invoice = 20;              // purchase.perm_no
constexpr std::int64_t highest_id = 0x7fffffff;  // purchase.op_n

}  // namespace

common::FormTable<HeadFields> head_form() {
    return head_fields;
}

common::FormTable<FootFields> foot_form() {
    return foot_fields;
}

common::FormTable<LineFields> line_form() {
    return line_fields_table;
}

std::filesystem::path receipt_draft_file(const signin::Session& session) {
    return sales::draft_file(session.program_folder, "receipt", session.shop, session.cash_point);
}

GoodsIn::GoodsIn(database::Connection& connection, const signin::Session& session, common::Services services)
    : connection_(connection), session_(session), services_(services) {}

std::optional<Receipt> GoodsIn::left_open() {
    const auto file = receipt_draft_file(session_);
    std::error_code ignored;
    if (!std::filesystem::exists(file, ignored)) return std::nullopt;
    std::optional<Receipt> left;
    try {
        left = common::from_json_text<Receipt>(common::read_file(file));
    } catch (const std::exception&) {
        // A text of a later version, or damaged.
    }
    const auto number = left ? number_of(connection_, *left) : std::nullopt;
    if (number)
        services_.prompts.message(std::string(message::draft_saved) + std::to_string(*number),
                                  common::Icon::information);
    if (left && !left->lines.empty() && !number && services_.prompts.question(message::ask_draft))
        return left;
    forget();
    return std::nullopt;
}

void GoodsIn::begin(PurchaseKind kind) {
    Receipt receipt;
    receipt.kind = kind;
    begin(std::move(receipt));
}

void GoodsIn::begin(Receipt receipt) {
    receipt_ = std::move(receipt);
    if (receipt_.id == 0) receipt_.id = common::random_number(highest_id);
    if (receipt_.store == 0) receipt_.store = session_.store_code;
    if (receipt_.date == common::Date()) receipt_.date = services_.clock.now().date;
    // Lines that come from a saved document lack what the cards say.
    for (Line& line : receipt_.lines) {
        if (line.former_price != 0 || line.retail != 0) continue;
        const auto item = sales::load_item(connection_, line.item, line.unit_level);
        if (!item) continue;
        const Line known = line_of(*item);
        line.former_price = known.former_price;
        line.retail = known.retail;
    }
    saved_.reset();
    row = receipt_.lines.empty() ? 0 : receipt_.lines.size() - 1;
    reload_suppliers();
    stores_ = database::load_stores(connection_);
    drawers_ = database::load_drawers(connection_, receipt_.store);
    head = {receipt_.supplier, receipt_.invoice, receipt_.date, receipt_.store};
    foot = {discount_text(receipt_.discount.value()), discount_text(receipt_.tax.value()), receipt_.drawer,
            receipt_.note};
}

void GoodsIn::reload_suppliers() {
    suppliers_ = accounts::load_parties(connection_, accounts::PartyKind::vendor);
}

std::optional<Refusal> GoodsIn::take_head() {
    if (head.date > services_.clock.now().date) return Refusal("receipt_date", message::future_date);
    if (!head.store) return Refusal("receipt_store", common::message::choose_store);
    const std::string invoice(common::trim(head.invoice));
    if (common::code_points(invoice).size() > longest_invoice)
        return Refusal("receipt_invoice", common::message::text_too_long);
    receipt_.supplier = head.supplier;
    receipt_.invoice = invoice;
    receipt_.date = head.date;
    if (receipt_.store != *head.store) {
        receipt_.store = *head.store;
        drawers_ = database::load_drawers(connection_, receipt_.store);
        receipt_.drawer = foot.drawer = std::nullopt;
    }
    keep();
    return std::nullopt;
}

std::optional<Refusal> GoodsIn::take_foot() {
    Amount discount;
    if (auto refused = read_discount(foot.discount, receipt_.total(), "receipt_discount", discount))
        return refused;
    const auto tax = common::read_amount(foot.tax);
    if (!tax.is_good()) return Refusal("receipt_tax", tax.refusal);
    if (!database::TextLimits(connection_, "purchase").fits("notes", foot.note))
        return Refusal("receipt_note", common::message::text_too_long);
    receipt_.discount = discount;
    receipt_.tax = tax.value;
    receipt_.drawer = foot.drawer.value_or(0) == 0 ? std::nullopt : foot.drawer;
    receipt_.note = foot.note;
    keep();
    return std::nullopt;
}

Line GoodsIn::line_of(const sales::Item& item) {
    Line line;
    line.item = item.code;
    line.name = item.name;
    line.unit_level = item.unit_level;
    line.factor = item.unit_level == 1 ? 1 : item.factor;
    line.former_price = item.prices[sales::cost_level - 1].value_or(0);
    line.retail = item.prices[sales::retail_level - 1].value_or(0);
    if (line.former_price == 0 && item.unit_level > 1)
        if (const auto unit = sales::load_item(connection_, item.code, 1))
            line.former_price = unit->prices[sales::cost_level - 1].value_or(0) * line.factor;
    line.price = common::round_decimals(line.former_price, price_decimals);
    return line;
}

std::optional<Refusal> GoodsIn::add(const sales::Item& item, double quantity) {
    if (item.sale_only) return Refusal("", message::service);
    if (item.unit_level > 1 && item.factor <= 0) return Refusal("", message::no_factor);
    const auto same = [&](const Line& line) {
        return line.item == item.code && line.unit_level == item.unit_level;
    };
    const auto known = std::find_if(receipt_.lines.rbegin(), receipt_.lines.rend(), same);
    const double raised =
        sales::without_noise((known == receipt_.lines.rend() ? 0 : known->quantity) + quantity);
    if (!sales::is_valid_quantity(raised)) return Refusal("", message::wrong_quantity);
    if (known != receipt_.lines.rend()) {
        if (known->returnable && raised > *known->returnable)
            return Refusal("",
                           std::string(message::most_returnable) + common::shortest_text(*known->returnable));
        known->quantity = raised;
        row = static_cast<std::size_t>(receipt_.lines.rend() - known) - 1;
    } else {
        if (receipt_.source != 0) return Refusal("", message::not_of_receipt);
        Line line = line_of(item);
        line.quantity = raised;
        if (receipt_.is_return()) {
            const auto oldest =
                sales::StockBatches(connection_, receipt_.store, {item.code}).oldest(item.code);
            if (oldest && *oldest != common::no_expiry) line.expiry = oldest;
        }
        receipt_.lines.push_back(std::move(line));
        row = receipt_.lines.size() - 1;
    }
    return take_foot();
}

std::vector<common::Choice> GoodsIn::units() {
    std::vector<common::Choice> units;
    if (row >= receipt_.lines.size()) return units;
    const Line& line = receipt_.lines[row];
    const auto cards = connection_.query(sales::item_statement(line.item));
    if (cards.empty()) return units;
    for (int unit = 1; unit <= 3; ++unit)
        if (line.returnable ? unit == line.unit_level
                            : unit == 1 || sales::item_of(cards.front(), unit).factor > 0)
            units.push_back({unit, std::string(sales::unit_name(unit))});
    return units;
}

void GoodsIn::add_batch() {
    if (row >= receipt_.lines.size() || receipt_.source != 0) return;
    Line line = receipt_.lines[row];
    line.quantity = 1;
    line.discount = 0;
    line.expiry.reset();
    receipt_.lines.insert(receipt_.lines.begin() + static_cast<std::ptrdiff_t>(row) + 1, std::move(line));
    ++row;
    keep();
}

void GoodsIn::remove_line() {
    if (row >= receipt_.lines.size()) return;
    receipt_.lines.erase(receipt_.lines.begin() + static_cast<std::ptrdiff_t>(row));
    if (row > 0 && row >= receipt_.lines.size()) --row;
    // A discount on the whole that exceeds what is left is removed with the line.
    if (receipt_.discount > receipt_.total()) foot.discount.clear();
    take_foot();
}

double GoodsIn::cost_of(std::size_t at) const {
    return unit_cost(receipt_.lines[at], receipt_.costs()[at]);
}

double GoodsIn::retail_of(std::size_t at) const {
    const Line& line = receipt_.lines[at];
    if (line.new_retail) return *line.new_retail;
    if (line.margin) return price_above(cost_of(at), *line.margin, line.step);
    return line.retail;
}

std::optional<Refusal> GoodsIn::set_margin(std::string_view percent, int step, bool all_lines) {
    const auto margin = common::read_number(percent, message::wrong_margin);
    if (!margin.is_good() || margin.value > 1000)
        return Refusal("margin_percent", margin.is_good() ? message::wrong_margin : margin.refusal);
    for (std::size_t at = 0; at < receipt_.lines.size(); ++at) {
        if (!all_lines && at != row) continue;
        Line& line = receipt_.lines[at];
        line.new_retail.reset();
        line.margin = margin.value;
        line.step = step;
    }
    keep();
    return std::nullopt;
}

void GoodsIn::keep() const {
    if (receipt_.lines.empty()) return forget();
    try {
        common::replace_file(receipt_draft_file(session_), common::json_text(receipt_),
                             common::shop_file_mode);
    } catch (const std::exception& error) {
        services_.log.log_event("draft of a receipt: " + std::string(error.what()), common::saving_code);
    }
}

void GoodsIn::forget() const {
    std::error_code ignored;
    std::filesystem::remove(receipt_draft_file(session_), ignored);
}

}  // namespace purchases
