#include "purchases/suppliers.h"

#include "accounts/parties.h"
#include "common/messages.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/form.h"
#include "database/next_number.h"
#include "database/transaction.h"
#include "purchases/messages.h"

namespace purchases {

using common::Amount;
using common::FieldKind;
using common::Refusal;
using database::Sql;

namespace {

using Card = SupplierCard;

constexpr common::FormField<Card> supplier_fields[] = {
    // number, name, telephone, address, opening balance, which he owes us, note
    {&Card::number, {"supplier_number", "&كود", FieldKind::code, {0, 0}}},
    {&Card::name, {"supplier_name", "ال&اسم", FieldKind::text, {0, 1, 2}, "vname", message::enter_name}},
    {&Card::phone, {"supplier_phone", "ال&تليفون", FieldKind::digits, {1, 0}, "vphone"}},
    {&Card::address, {"supplier_address", "ال&عنوان", FieldKind::text, {1, 1, 2}, "vaddress"}},
    {&Card::opening, {"supplier_opening", "الر&صيد الافتتاحي", FieldKind::amount, {2, 0}, "vopen"}},
    {&Card::owes_us, {"supplier_owes_us", "الرصيد &لنا عنده", FieldKind::check, {2, 1}}},
    {&Card::note, {"supplier_note", "ملا&حظات", FieldKind::text, {3, 0, 3}, "note"}},
};

Sql row_of(std::int64_t code) {
    return Sql("select * from vendata where vcode = ") + code;
}

Card card_of(const database::Row& row) {
    Card card;
    database::load(supplier_form(), row, card);
    card.number = row.text("vcode");
    const Amount opening(row.number("vopen"));
    card.owes_us = opening < Amount();
    card.opening = (card.owes_us ? -opening : opening).text();
    return card;
}

// The captions of the fields in which two cards differ, with what the second one holds.
std::string differences(const Card& one, const Card& other) {
    std::string text;
    for (const auto& field : supplier_fields) {
        const common::FieldValue value = common::value_of(field, other);
        if (value == common::value_of(field, one)) continue;
        std::string caption = field.description.caption;
        caption.erase(caption.find('&'), 1);
        text += "\n" + caption;
        if (const auto* typed = std::get_if<std::string>(&value)) text += ": " + *typed;
    }
    return text;
}

}  // namespace

common::FormTable<SupplierCard> supplier_form() {
    return supplier_fields;
}

std::vector<common::Choice> suppliers_to_choose(database::Connection& connection) {
    auto choices = accounts::load_parties(connection, accounts::PartyKind::vendor);
    choices.insert(choices.begin(), {0, std::string(message::all_suppliers)});
    return choices;
}

std::vector<SupplierRow> list_suppliers(database::Connection& connection) {
    std::vector<SupplierRow> rows;
    for (const auto& row : connection.query("select vcode,vname,vphone,vacc from vendata order by vcode"))
        rows.push_back({row.integer("vcode"), std::string(common::trim_right(row.text("vname"))),
                        row.text("vphone"), Amount(row.number("vacc"))});
    return rows;
}

std::string_view Supplier::title() const {
    return is_editing() ? "بيانات مورد" : "مورد جديد";
}

void Supplier::open_new() {
    editing_.reset();
    seen_ = card = {};
    card.number = std::to_string(accounts::next_party_code(connection_));
}

std::optional<Refusal> Supplier::open_edit(std::int64_t code) {
    const auto rows = connection_.query(row_of(code));
    if (rows.empty()) return Refusal("", message::no_such_supplier);
    editing_ = code;
    seen_ = card = card_of(rows.front());
    return std::nullopt;
}

std::optional<Refusal> Supplier::check() {
    const database::TextLimits limits(connection_, "vendata");
    if (auto refused = database::check(supplier_form(), card, limits)) return refused;
    if (!is_editing() && !common::read_code(card.number))
        return Refusal("supplier_number", common::message::wrong_code);
    return std::nullopt;
}

std::optional<Refusal> Supplier::save() {
    if (auto refused = check()) return refused;
    Amount opening = common::read_amount(card.opening).value;
    if (card.owes_us) opening = -opening;
    std::optional<Refusal> refused;
    database::in_transaction(connection_, [&] { refused = write(opening); });
    if (refused) return refused;
    connection_.make_durable();
    session_.note({.kind = audit::Kind::list_changed, .what = std::string(message::supplier) + card.name});
    return std::nullopt;
}

// Writes nothing if it is refused.
std::optional<Refusal> Supplier::write(Amount opening) {
    code_ = is_editing() ? *editing_ : *common::read_code(card.number);
    database::Recordset row(connection_, row_of(code_));
    double before = 0;
    if (is_editing()) {
        const auto rows = connection_.query(row_of(code_));
        if (rows.empty()) return Refusal("", message::no_such_supplier);
        const Card now = card_of(rows.front());
        if (now != seen_)
            return Refusal("", std::string(message::changed_meanwhile) + differences(seen_, now));
        before = row.number("vopen");
    } else {
        if (!row.empty()) return Refusal("supplier_number", message::duplicate_supplier);
        if (!connection_.query(Sql("select ccode from custdata where ccode = ") + code_).empty())
            return Refusal("supplier_number", message::code_of_customer);
        row.add();
        row.set("vcode", code_);
        row.set("vacc", 0.0);
    }
    const double balance = is_editing() ? row.number("vacc") : 0;
    database::store(supplier_form(), card, row);
    row.set("vopen", opening.value());
    row.set("vacc", balance + opening.value() - before);
    row.update();
    return std::nullopt;
}

}  // namespace purchases
