#include "accounts/account_customer.h"

#include <cmath>

#include "accounts/messages.h"
#include "common/numbers.h"
#include "common/text.h"
#include "database/recordset.h"

namespace accounts {

using database::Null;
using database::quoted;
using database::Recordset;
using database::Sql;
using database::Value;

namespace {

std::optional<std::int64_t> code_in(const database::Row& row, std::string_view column) {
    if (row.null(column)) return std::nullopt;
    return row.integer(column);
}

Value code_value(const std::optional<std::int64_t>& code) {
    return code ? Value(*code) : Value(Null{});
}

Sql all_customers(std::int64_t code) {
    return Sql("select * from custdata where ccode = ") + code + " order by ccode";
}

}  // namespace

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

bool AccountCustomer::refuse(std::string_view text) {
    services_.prompts.message(text, common::Icon::critical);
    return false;
}

void AccountCustomer::load_lists() {
    search_classes("");
    countries_ = database::choices(connection_.query("select * from country"), "ccode", "cname");
    representatives_ = database::choices(connection_.query("select * from link"), "ccode", "cname");
    customers_ =
        database::choices(connection_.query("select * from custdata order by ccode"), "ccode", "cname");
}

bool AccountCustomer::open(CardMode mode, std::int64_t code) {
    mode_ = mode;
    load_lists();
    if (mode != CardMode::add) return show(code);
    card = {};
    balance_ = 0;
    choose_country({});
    return true;
}

bool AccountCustomer::show(std::int64_t code) {
    const auto found = connection_.query(all_customers(code));
    if (found.empty()) return refuse(message::no_such_customer);
    const database::Row& row = found.front();
    card = {};
    balance_ = row.number("cacc");
    // Places first: choosing one empties those below it.
    choose_country(code_in(row, "country"));
    choose_governorate(code_in(row, "gov"));
    choose_centre(code_in(row, "city"));
    choose_district(code_in(row, "dist"));
    card.number = row.text("ccode");
    card.name = row.text("cname");
    card.address = row.text("caddress");
    card.notes = row.text("cust_note");
    card.opening = common::format_amount(std::fabs(row.number("copen")));
    card.is_credit = row.number("copen") < 0;
    card.is_second_kind = row.integer("ctype") == 1;
    card.phone = row.text("cphone");
    card.mobile = row.text("mob");
    card.second_name = row.text("bname");
    card.third_name = row.text("mname");
    card.representative = code_in(row, "link");
    card.group = row.text("cust_grp");
    card.price_class = code_in(row, "cust_typ");
    card.takes_unsettled = row.integer("w_dep") == 1;
    card.pays_later = row.integer("w_pay") == 1;
    card.has_guarantor = row.integer("grntr") == 1;
    card.id_number = row.text("idno");
    card.guarantor = row.text("g_name");
    card.guarantor_id = row.text("G_idno");
    card.guarantor_phone = row.text("G_phone");
    return true;
}

void AccountCustomer::choose_country(std::optional<std::int64_t> code) {
    card.country = code;
    governorates_.clear();
    if (code) {
        governorates_ = database::choices(connection_.query(Sql("select * from gover where ccode=") + *code),
                                          "cgover", "cname");
    }
    choose_governorate({});
}

void AccountCustomer::choose_governorate(std::optional<std::int64_t> code) {
    card.governorate = code;
    centres_.clear();
    if (code)
        centres_ = database::choices(connection_.query(Sql("select * from cityn where cgov=") + *code),
                                     "ccity", "cname");
    choose_centre({});
}

void AccountCustomer::choose_centre(std::optional<std::int64_t> code) {
    card.centre = code;
    districts_.clear();
    if (code)
        districts_ = database::choices(connection_.query(Sql("select * from dist where ccity=") + *code),
                                       "cdist", "cname");
    choose_district({});
}

void AccountCustomer::search_classes(std::string_view text) {
    Sql statement("select * from cust_typ ");
    const std::string_view wanted = common::trim(text);
    if (const auto number = common::parse_integer(wanted)) {
        statement += Sql(" Where code = ") + *number;
    } else if (!wanted.empty()) {
        statement += Sql(" Where name like ") + quoted("%" + std::string(wanted) + "%");
    }
    price_classes_ = database::choices(connection_.query(statement), "code", "name");
}

bool AccountCustomer::texts_fit() {
    const database::TextLimits limits(connection_, "custdata");
    const std::pair<std::string_view, const std::string*> texts[] = {{"cname", &card.name},
                                                                     {"caddress", &card.address},
                                                                     {"cust_note", &card.notes},
                                                                     {"cphone", &card.phone},
                                                                     {"mob", &card.mobile},
                                                                     {"bname", &card.second_name},
                                                                     {"mname", &card.third_name},
                                                                     {"idno", &card.id_number},
                                                                     {"g_name", &card.guarantor},
                                                                     {"G_idno", &card.guarantor_id},
                                                                     {"G_phone", &card.guarantor_phone}};
    for (const auto& [column, text] : texts) {
        if (!limits.fits(column, *text)) return false;
    }
    return true;
}

bool AccountCustomer::save() {
    if (mode_ == CardMode::view) return refuse(message::only_view);
    if (common::trim(card.number).empty()) return refuse(message::enter_code);
    if (common::trim(card.name).empty()) return refuse(message::enter_customer);
    const auto code = read_code(card.number);
    if (!code) return refuse(message::wrong_code);
    const Amount opening = read_amount(card.opening);
    if (!opening.message.empty()) {
        card.opening = "0.00";
        return refuse(opening.message);
    }
    Value group = Null{};
    if (!common::trim(card.group).empty()) {
        const auto number = read_code(card.group);
        if (!number) return refuse(message::wrong_code);
        group = *number;
    }
    if (!texts_fit()) return refuse(message::too_long);

    Recordset customer(connection_, all_customers(*code));
    if (mode_ == CardMode::add) {
        if (!customer.empty()) return refuse(message::duplicate_code);
        customer.add();
    } else if (customer.empty()) {
        return refuse(message::no_such_customer);
    }

    // Both columns take the opening amount with its side: a customer in credit is owed by the shop from the
    // start. Read again now, the running balance holds what other tills have sold him since the card was
    // opened.
    const double signed_opening = card.is_credit ? -opening.value : opening.value;
    double account = signed_opening;
    if (mode_ == CardMode::edit)
        account = customer.number("cacc") + (signed_opening - customer.number("copen"));

    customer.set("ccode", *code);
    customer.set("cname", card.name);
    customer.set("caddress", card.address);
    customer.set("cust_note", card.notes);
    // Invoices move it by unrounded nets, so it is not rounded either: an edit shifts it by the difference
    // alone.
    customer.set("cacc", account);
    customer.set("copen", signed_opening);
    customer.set("ctype", card.is_second_kind ? 1 : 0);
    customer.set("cphone", card.phone);
    customer.set("mob", card.mobile);
    customer.set("bname", card.second_name);
    customer.set("mname", card.third_name);
    customer.set("link", code_value(card.representative));
    customer.set("country", code_value(card.country));
    customer.set("gov", code_value(card.governorate));
    customer.set("city", code_value(card.centre));
    customer.set("dist", code_value(card.district));
    customer.set("cust_grp", group);
    customer.set("cust_typ", code_value(card.price_class));
    customer.set("w_dep", card.takes_unsettled ? 1 : 0);
    customer.set("w_pay", card.pays_later ? 1 : 0);
    customer.set("grntr", card.has_guarantor ? 1 : 0);
    if (card.has_guarantor) {
        customer.set("idno", card.id_number);
        customer.set("g_name", card.guarantor);
        customer.set("G_idno", card.guarantor_id);
        customer.set("G_phone", card.guarantor_phone);
    }
    customer.update();
    connection_.make_durable();
    load_lists();
    balance_ = account;
    return true;
}

}  // namespace accounts
