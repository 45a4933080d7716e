#include "goods/item_card.h"

#include <algorithm>
#include <limits>

#include "common/messages.h"
#include "common/numbers.h"
#include "common/text.h"
#include "database/form.h"
#include "database/next_number.h"
#include "database/reads.h"
#include "database/transaction.h"
#include "goods/messages.h"
#include "signin/permissions.h"

namespace goods {

using common::FieldKind;
using common::FormField;
using common::Refusal;
using database::Row;
using database::Sql;

namespace {

using Card = CardFields;

constexpr FormField<Card> fields[] = {
    {&Card::code,
     {"item_code",
      "&كود",
      FieldKind::code,
      {0, 0},
      "code",
      message::enter_code,
      common::message::wrong_code}},
    {&Card::name, {"item_name", "ا&سم الصنف", FieldKind::text, {0, 1, 5}, "name", message::enter_name}},
    {&Card::description, {"item_description", "ال&وصف", FieldKind::text, {1, 4, 2}, "desc"}},
    // units in a pack, in a carton; smallest stock wanted
    {&Card::pack, {"item_pack", "وحدات ال&عبوة", FieldKind::digits, {2, 0}}},
    {&Card::carton, {"item_carton", "وحدات الكر&تونة", FieldKind::digits, {2, 1}}},
    {&Card::minimum, {"item_minimum", "الحد الأدن&ى", FieldKind::digits, {2, 2}}},
    // sold without stock; not sold any more
    {&Card::is_service, {"item_service", "يباع بدون كميات", FieldKind::check, {2, 3, 2}, "sale_only"}},
    {&Card::is_stopped, {"item_stopped", "موقوف لا يباع", FieldKind::check, {2, 5}, "stop"}},
};

constexpr std::string_view price_fields[units][price_levels] = {
    {"item_price_11", "item_price_12", "item_price_13", "item_price_14", "item_price_15"},
    {"item_price_21", "item_price_22", "item_price_23", "item_price_24", "item_price_25"},
    {"item_price_31", "item_price_32", "item_price_33", "item_price_34", "item_price_35"}};

std::string number_text(const Row& row, std::string_view column) {
    return row.number(column) == 0 ? std::string() : common::shortest_text(row.number(column));
}

// Prices have two decimals; a cost that was divided among goods may need more.
std::string price_text(const Row& row, int unit_level, int price_level) {
    const std::string column = sales::price_column(unit_level, price_level);
    const double price = row.number(column);
    if (row.null(column) || (price == 0 && price_level != sales::cost_level)) return {};
    const bool is_even = same_price(price, common::round_decimals(price, 2));
    return is_even ? common::format_amount(price) : common::shortest_text(common::round_decimals(price, 4));
}

std::vector<std::string> names(const database::Result& rows) {
    std::vector<std::string> list;
    for (const Row& row : rows)
        list.emplace_back(common::trim_right(row.text("name")));
    return list;
}

// A difference between what two users see on a card, and what to do about it: a field that was not edited
// takes over what the other user wrote.
class Merge {
  public:
    Merge(CardFields& edited, const CardFields& opened, const CardFields& found)
        : edited_(edited), opened_(opened), found_(found) {}

    std::string run() {
        take("الاسم", &Card::name);
        take("الوصف", &Card::description);
        take("المجموعة", &Card::group);
        take("الشركة", &Card::maker);
        take("وحدات العبوة", &Card::pack);
        take("وحدات الكرتونة", &Card::carton);
        take("الحد الأدنى", &Card::minimum);
        take("يباع بدون كميات", &Card::is_service);
        take("موقوف لا يباع", &Card::is_stopped);
        for (int unit = 0; unit < units; ++unit)
            for (int level = 0; level < price_levels; ++level)
                take_price(static_cast<std::size_t>(unit), static_cast<std::size_t>(level));
        if (found_.barcodes != opened_.barcodes) {
            said_ += "\nالباركود : " + barcodes_text(found_);
            if (edited_.barcodes == opened_.barcodes) edited_.barcodes = found_.barcodes;
        }
        return said_;
    }

  private:
    static std::string shown(const std::string& text) { return text.empty() ? "—" : text; }
    static std::string shown(bool is_set) { return is_set ? "نعم" : "لا"; }
    static std::string barcodes_text(const CardFields& card) {
        std::string text;
        for (const CardBarcode& barcode : card.barcodes)
            text += (text.empty() ? "" : " ، ") + barcode.text;
        return shown(text);
    }
    template <typename Value>
    void take(std::string_view caption, Value& edited, const Value& opened, const Value& found) {
        if (found == opened) return;
        said_ += "\n" + std::string(caption) + " : من " + shown(opened) + " إلى " + shown(found);
        if (edited == opened) edited = found;
    }
    template <typename Value>
    void take(std::string_view caption, Value Card::*member) {
        take(caption, edited_.*member, opened_.*member, found_.*member);
    }
    void take_price(std::size_t unit, std::size_t level) {
        const std::string caption = std::string(level_name(static_cast<int>(level) + 1)) + " " +
                                    std::string(sales::unit_name(static_cast<int>(unit) + 1));
        take(caption, edited_.prices[unit][level], opened_.prices[unit][level], found_.prices[unit][level]);
    }

    CardFields& edited_;
    const CardFields& opened_;
    const CardFields& found_;
    std::string said_;
};

}  // namespace

common::FormTable<CardFields> card_form() {
    return fields;
}

std::string_view price_field(int unit_level, int price_level) {
    return price_fields[unit_level - 1][price_level - 1];
}

std::string_view level_name(int price_level) {
    constexpr std::string_view level_names[price_levels] = {"التكلفة", "قطاعي", "جملة", "سعر 4", "سعر 5"};
    return level_names[price_level - 1];
}

ItemCard::ItemCard(database::Connection& connection, const signin::Session& session, common::Prompts& prompts,
                   common::Clock& clock)
    : connection_(connection),
      session_(session),
      prompts_(prompts),
      clock_(clock),
      shows_cost_(signin::allows(session, signin::Action::see_cost)) {}

void ItemCard::read_lists() {
    groups_ = names(connection_.query("select [name] from item_types order by [name]"));
    makers_ = names(connection_.query("select [name] from makers order by [name]"));
}

void ItemCard::open_new() {
    read_lists();
    const std::int64_t highest =
        database::integer_of(connection_.scalar("select max(code) as highest from items"));
    is_new_ = true;
    code_ = 0;
    card = {};
    if (highest < std::numeric_limits<std::int32_t>::max()) card.code = std::to_string(highest + 1);
    shown_ = card;
}

std::optional<Refusal> ItemCard::open(std::int64_t code) {
    read_lists();
    auto found = read(code);
    if (!found) return Refusal("", message::no_such_item);
    is_new_ = false;
    code_ = code;
    card = shown_ = std::move(*found);
    return std::nullopt;
}

void ItemCard::copy_as_new() {
    CardFields copy = card;
    open_new();
    copy.code = card.code;
    copy.barcodes.clear();
    card = std::move(copy);
}

std::optional<CardFields> ItemCard::read(std::int64_t code) {
    std::optional<CardFields> found;
    database::Reads reads;
    reads.add(
        Sql("select items.*, item_types.[name] as group_name, makers.[name] as maker_name from items left "
            "join item_types on items.itype = item_types.code left join makers on items.fact = "
            "makers.code where items.code = ") +
            code,
        [&](const database::Result& rows) {
            if (rows.empty()) return;
            const Row& row = rows.front();
            found.emplace();
            database::load(card_form(), row, *found);
            found->group = common::trim_right(row.text("group_name"));
            found->maker = common::trim_right(row.text("maker_name"));
            found->pack = number_text(row, "num2");
            found->carton = number_text(row, "num3");
            found->minimum = number_text(row, "mquan");
            for (int unit = 1; unit <= units; ++unit)
                for (int level = shows_cost_ ? sales::cost_level : sales::retail_level; level <= price_levels;
                     ++level)
                    if (unit == 1 || !(unit == 2 ? found->pack : found->carton).empty())
                        found->prices[static_cast<std::size_t>(unit) - 1]
                                     [static_cast<std::size_t>(level) - 1] = price_text(row, unit, level);
        });
    reads.add(Sql("select bar, scode from barcode where code = ") + code + " order by scode, bar",
              [&](const database::Result& rows) {
                  for (const Row& row : rows)
                      if (found)
                          found->barcodes.push_back({std::string(common::trim_right(row.text("bar"))),
                                                     sales::unit_level_of(row.integer("scode"))});
              });
    reads.run(connection_);
    return found;
}

std::vector<PriceHistoryRow> ItemCard::history() {
    std::vector<PriceHistoryRow> rows = price_history(connection_, code_);
    if (!shows_cost_)
        std::erase_if(rows, [](const auto& row) { return row.price.price_level == sales::cost_level; });
    return rows;
}

std::optional<Refusal> ItemCard::save() {
    if (!signin::authorise_change(session_, prompts_, signin::Action::edit_goods)) return Refusal("", "");
    Checked checked;
    if (auto refusal = check(checked)) return refusal;
    if (!may_be_below_cost(checked) || !may_add_names()) return Refusal("", "");
    std::optional<Refusal> refusal;
    database::in_transaction(connection_, [&] {
        database::hold_numbers(connection_);
        refusal = write(checked);
    });
    if (refusal) return refusal;
    connection_.make_durable();
    note();
    return open(code_);
}

std::optional<Refusal> ItemCard::take_over_changes() {
    const auto found = read(code_);
    if (!found) return Refusal("", message::no_such_item);
    if (*found == shown_) return std::nullopt;
    const std::string changes = Merge(card, shown_, *found).run();
    shown_ = *found;
    return Refusal(
        "", std::string(message::changed_meanwhile) + changes + "\n" + std::string(message::look_again));
}

void ItemCard::note() const {
    CardFields without_prices = card;
    without_prices.prices = shown_.prices;
    if (is_new_ || without_prices != shown_)
        session_.note({.kind = audit::Kind::item_changed,
                       .what = (is_new_ ? "صنف جديد: " : "") + card.name,
                       .item = code_});
    if (changed_prices_.empty()) return;
    std::string what = card.name;
    for (const auto& [price, from] : changed_prices_)
        what += ", " + std::string(level_name(price.price_level)) + " " +
                std::string(sales::unit_name(price.unit_level)) + " من " +
                (from ? common::format_amount(*from) : "—") + " إلى " + common::format_amount(price.price);
    session_.note({.kind = audit::Kind::prices_changed, .what = what, .item = code_});
}

}  // namespace goods
