#include "accounts/customer_card.h"

#include <cmath>

#include "accounts/messages.h"
#include "accounts/parties.h"
#include "common/numbers.h"
#include "common/search.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/form.h"
#include "database/name_search.h"

namespace accounts {

using common::FieldKind;
using common::FieldOption;
using common::FormField;
using common::Refusal;
using database::Recordset;
using database::Sql;

namespace {

using Card = CustomerCard;

constexpr FieldOption sides[] = {{0, "مدين"}, {1, "دائن"}};  // debit, credit

constexpr FormField<Card> customer_fields[] = {
    // customer number
    {&Card::number,
     {"customer_number",
      "&كود العميل",
      FieldKind::code,
      {0, 0},
      "ccode",
      message::enter_code,
      message::wrong_code}},
    // customer name
    {&Card::name,
     {"customer_name", "ا&سم العميل", FieldKind::text, {0, 1, 3}, "cname", message::enter_customer}},
    // name of the person in charge
    {&Card::second_name, {"customer_second_name", "اسم المسئول", FieldKind::text, {1, 0}, "bname"}},
    // name on receipts
    {&Card::third_name, {"customer_third_name", "الاسم في الإيصالات", FieldKind::text, {1, 1}, "mname"}},
    // telephone, mobile
    {&Card::phone, {"customer_phone", "ال&تليفون", FieldKind::digits, {1, 2}, "cphone"}},
    {&Card::mobile, {"customer_mobile", "المو&بايل", FieldKind::digits, {1, 3}, "mob"}},
    // address, notes
    {&Card::address, {"customer_address", "الع&نوان", FieldKind::text, {2, 0, 2}, "caddress"}},
    {&Card::notes, {"customer_notes", "ملاح&ظات", FieldKind::text, {2, 2, 2}, "cust_note"}},
    // country, governorate, centre, district
    {&Card::country, {"customer_country", "الدولة", FieldKind::choice, {3, 0}, "country"}},
    {&Card::governorate, {"customer_governorate", "المحافظة", FieldKind::choice, {3, 1}, "gov"}},
    {&Card::centre, {"customer_centre", "المركز", FieldKind::choice, {3, 2}, "city"}},
    {&Card::district, {"customer_district", "الحي", FieldKind::choice, {3, 3}, "dist"}},
    // opening balance, its side
    {&Card::opening, {"customer_opening", "الرصيد الافتتاحي", FieldKind::amount, {4, 0}}},
    {&Card::is_credit, {"customer_side", "طبيعة الرصيد", FieldKind::options, {4, 1}, "", "", "", 0, sides}},
    // representative, customer group
    {&Card::representative, {"customer_representative", "المن&دوب", FieldKind::choice, {4, 2}, "link"}},
    {&Card::group,
     {"customer_group", "مجموعة العملاء", FieldKind::code, {4, 3}, "cust_grp", "", message::wrong_code}},
    // search for a price class, price class
    {{}, {"customer_class_search", "بحث فئة السعر", FieldKind::search, {5, 0}}},
    {&Card::price_class, {"customer_class", "&فئة السعر", FieldKind::choice, {5, 1}, "cust_typ"}},
    // customer of the second kind, guarantor
    {&Card::is_second_kind, {"customer_second_kind", "عميل نو&ع ثان", FieldKind::check, {5, 2}, "ctype"}},
    {&Card::has_guarantor, {"customer_has_guarantor", "&ضامن", FieldKind::check, {5, 3}, "grntr"}},
    // takes delivery without settling the account, is served without an advance payment
    {&Card::takes_unsettled,
     {"customer_unsettled", "است&لام بدون اكمال الحساب", FieldKind::check, {6, 0, 2}, "w_dep"}},
    {&Card::pays_later,
     {"customer_pays_later", "يعامل بدون دفع م&قدم", FieldKind::check, {6, 2, 2}, "w_pay"}},
};

constexpr FormField<Card> guarantor_fields[] = {
    // number of the customer's identity card
    {&Card::id_number, {"customer_id_number", "رقم بطاقة العميل", FieldKind::digits, {0, 0}, "idno"}},
    // the guarantor's name, number of his identity card, telephone
    {&Card::guarantor, {"customer_guarantor", "اسم الضامن", FieldKind::text, {0, 1}, "g_name"}},
    {&Card::guarantor_id, {"customer_guarantor_id", "رقم بطاقة الضامن", FieldKind::digits, {0, 2}, "G_idno"}},
    {&Card::guarantor_phone,
     {"customer_guarantor_phone", "تليفون الضامن", FieldKind::digits, {0, 3}, "G_phone"}},
};

constexpr std::string_view opening_field = "customer_opening";

// The chosen codes of the chained places, in the order of AccountCustomer::place_fields.
constexpr std::optional<std::int64_t> Card::*place_members[] = {&Card::country, &Card::governorate,
                                                                &Card::centre, &Card::district};

Sql customer_row(std::int64_t code) {
    return Sql("select * from custdata where ccode = ") + code + " order by ccode";
}

}  // namespace

common::FormTable<CustomerCard> customer_form() {
    return customer_fields;
}

common::FormTable<CustomerCard> guarantor_form() {
    return guarantor_fields;
}

std::string_view AccountCustomer::title() const {
    switch (mode_) {
        case CardMode::add:
            return "بيانات عميل جديد";
        case CardMode::edit:
            return "تعديل بيانات عميل";
        default:
            return "عرض بيانات عميل ";
    }
}

void AccountCustomer::load_lists() {
    price_classes_ = find_classes("");
    representatives_ = database::choices(connection_.query("select * from link"), "ccode", "cname");
    customers_ =
        database::choices(connection_.query("select * from custdata order by ccode"), "ccode", "cname");
    places_[0] = database::choices(connection_.query("select * from country"), "ccode", "cname");
}

std::optional<Refusal> AccountCustomer::open(CardMode mode, std::int64_t code) {
    mode_ = mode;
    load_lists();
    if (mode != CardMode::add) return show(code);
    card = {};
    const std::int64_t free = next_party_code(connection_);
    if (free <= highest_code().value_or(free)) card.number = std::to_string(free);
    balance_ = 0;
    load_places(1);
    return std::nullopt;
}

// A quotation for a customer with a higher number could not be stored.
std::optional<std::int64_t> AccountCustomer::highest_code() const {
    return database::highest_whole_number(connection_, "offer", "vcode");
}

std::optional<Refusal> AccountCustomer::show(std::int64_t code) {
    const auto found = connection_.query(customer_row(code));
    if (found.empty()) return Refusal("", common::message::no_such_customer);
    const database::Row& row = found.front();
    card = {};
    database::load(customer_form(), row, card);
    database::load(guarantor_form(), row, card);
    card.opening = common::format_amount(std::fabs(row.number("copen")));
    card.is_credit = row.number("copen") < 0;
    balance_ = row.number("cacc");
    load_places(1);
    return std::nullopt;
}

// The lists of a level and of those below it, for the places chosen above them.
void AccountCustomer::load_places(std::size_t level) {
    for (; level < places_.size(); ++level) {
        places_[level].clear();
        const auto above = card.*place_members[level - 1];
        if (!above) continue;
        const Sql statement = level == 1   ? Sql("select * from gover where ccode=") + *above
                              : level == 2 ? Sql("select * from cityn where cgov=") + *above
                                           : Sql("select * from dist where ccity=") + *above;
        constexpr std::string_view code_columns[] = {"", "cgover", "ccity", "cdist"};
        places_[level] = database::choices(connection_.query(statement), code_columns[level], "cname");
    }
}

void AccountCustomer::choose_place(std::size_t level, std::optional<std::int64_t> code) {
    if (card.*place_members[level] == code) return;
    card.*place_members[level] = code;
    for (std::size_t below = level + 1; below < places_.size(); ++below)
        (card.*place_members[below]).reset();
    load_places(level + 1);
}

std::vector<common::Choice> AccountCustomer::find_classes(std::string_view wanted) {
    Sql statement("select * from cust_typ ");
    if (const auto number = common::parse_integer(wanted)) {
        statement += Sql(" Where code = ") + *number;
    } else if (!common::search_words(wanted).empty()) {
        statement += Sql(" Where ") + database::contains_typed_words("name", wanted);
    }
    return database::choices(connection_.query(statement), "code", "name");
}

std::optional<Refusal> AccountCustomer::search_classes(std::string_view text) {
    std::vector<common::Choice> found = find_classes(common::trim(text));
    if (found.empty()) return Refusal("customer_class_search", message::no_such_class);
    // A single match is chosen. Of several the cashier chooses one; until then the customer keeps his class.
    const std::optional<std::int64_t> chosen = card.price_class;
    if (found.size() == 1)
        card.price_class = found.front().code;
    else if (chosen && contains(price_classes_, *chosen) && !contains(found, *chosen))
        found.push_back({*chosen, name_of(price_classes_, *chosen)});
    price_classes_ = std::move(found);
    return std::nullopt;
}

std::optional<Refusal> AccountCustomer::check() const {
    const database::TextLimits limits(connection_, "custdata");
    auto refused = database::check(customer_form(), card, limits);
    if (!refused && card.has_guarantor) refused = database::check(guarantor_form(), card, limits);
    if (refused || mode_ != CardMode::add) return refused;
    const auto highest = highest_code();
    if (highest && common::read_code(card.number) > highest)
        refused = Refusal("customer_number", std::string(message::code_too_high) + std::to_string(*highest));
    return refused;
}

std::optional<Refusal> AccountCustomer::save() {
    if (mode_ == CardMode::view) return Refusal("", message::only_view);
    if (const auto refused = check()) {
        if (refused->field == opening_field) card.opening = "0.00";
        return refused;
    }
    Recordset customer(connection_, customer_row(common::read_code(card.number).value()));
    if (mode_ == CardMode::add) {
        if (!customer.empty()) return Refusal("customer_number", message::duplicate_code);
        customer.add();
    } else if (customer.empty()) {
        return Refusal("", common::message::no_such_customer);
    }

    // Both columns get the opening amount with its sign. The running balance has just been read again, so it
    // includes what other tills have sold the customer since the card was opened. An edit moves it by the
    // difference only, unrounded like the movements of invoices.
    const double amount = common::read_amount(card.opening).value.value();
    const double opening = card.is_credit ? -amount : amount;
    double account = opening;
    if (mode_ == CardMode::edit) account = customer.number("cacc") + (opening - customer.number("copen"));

    database::store(customer_form(), card, customer);
    if (card.has_guarantor) database::store(guarantor_form(), card, customer);
    customer.set("copen", opening);
    customer.set("cacc", account);
    customer.update();
    connection_.make_durable();
    load_lists();
    balance_ = account;
    return std::nullopt;
}

}  // namespace accounts
