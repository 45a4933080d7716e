#include "accounts/cash_customer.h"

#include "accounts/messages.h"
#include "common/typed.h"
#include "database/form.h"

namespace accounts {

using common::FieldKind;
using common::Refusal;
using database::quoted;
using database::Sql;

namespace {

using Fields = WalkInFields;

constexpr common::FormField<Fields> walk_in_fields[] = {
    // code, name
    {&Fields::code, {"walk_in_code", "&كود", FieldKind::code, {0, 0}, "", "", message::wrong_code}},
    {&Fields::name, {"walk_in_name", "ال&اسم", FieldKind::text, {0, 1}, "zname", message::enter_customer}},
    // telephone, e-mail
    {&Fields::phone, {"walk_in_phone", "ال&تليفون", FieldKind::digits, {1, 0}, "zphone"}},
    {&Fields::mail, {"walk_in_mail", "البري&د الإلكتروني", FieldKind::digits, {1, 1}, "zmail"}},
};

WalkInCustomer walk_in_of(const database::Row& row) {
    return {row.integer("zcode"), false, row.text("zname"), row.text("zphone"), row.text("zmail")};
}

}  // namespace

std::optional<WalkInCustomer> find_walk_in(database::Connection& connection, std::int64_t code) {
    const auto rows = connection.query(Sql("select * from cust_cash where zcode = ") + code);
    return rows.empty() ? std::nullopt : std::optional(walk_in_of(rows.front()));
}

common::FormTable<WalkInFields> walk_in_form() {
    return walk_in_fields;
}

void CashCustomer::open() {
    proposed_ = database::integer_of(connection_.scalar("select max(zcode) as last_ from cust_cash")) + 1;
    loaded_ = 0;
    fields = {std::to_string(proposed_), "", "", ""};
    results_.clear();
}

void CashCustomer::search(const Sql& condition) {
    results_.clear();
    for (const auto& row : connection_.query(Sql(" select * from cust_cash ") + condition))
        results_.push_back(walk_in_of(row));
}

void CashCustomer::search_names() {
    search(fields.name.empty() ? Sql("") : Sql("Where zname like ") + quoted("%" + fields.name + "%"));
}

void CashCustomer::search_phones() {
    search(fields.phone.empty() ? Sql("") : Sql("Where zphone like ") + quoted("%" + fields.phone + "%"));
}

void CashCustomer::search_mails() {
    search(fields.mail.empty() ? Sql("") : Sql("Where zmail like ") + quoted("%" + fields.mail + "%"));
}

void CashCustomer::take(const WalkInCustomer& customer) {
    loaded_ = customer.code;
    fields = {std::to_string(customer.code), customer.name, customer.phone, customer.mail};
}

void CashCustomer::choose(std::size_t row) {
    if (row < results_.size()) take(results_[row]);
}

std::optional<Refusal> CashCustomer::enter_code() {
    const auto code = common::read_code(fields.code);
    if (!code) return Refusal("walk_in_code", message::wrong_code);
    if (const auto found = find_walk_in(connection_, *code)) {
        take(*found);
    } else if (*code != proposed_) {
        return Refusal("walk_in_code", message::no_such_cash_customer);
    }
    return std::nullopt;
}

std::optional<Refusal> CashCustomer::confirm() {
    const auto code = common::read_code(fields.code);
    if (!code) return Refusal("walk_in_code", message::wrong_code);
    const bool is_new = *code == proposed_ && loaded_ != *code;
    if (!is_new) {
        const auto found = find_walk_in(connection_, *code);
        if (!found) return Refusal("walk_in_code", message::no_such_cash_customer);
        // A code that was typed but not entered brings its own fields; loaded ones may have been corrected.
        if (loaded_ != *code) take(*found);
    }
    const database::TextLimits limits(connection_, "cust_cash");
    if (auto refused = database::check(walk_in_form(), fields, limits)) return refused;
    confirmed_ = {*code, is_new, fields.name, fields.phone, fields.mail};
    return std::nullopt;
}

}  // namespace accounts
