#include "accounts/walk_in_customer.h"

#include <algorithm>

#include "accounts/messages.h"
#include "common/search.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/form.h"
#include "database/name_search.h"
#include "database/next_number.h"
#include "database/recordset.h"
#include "database/transaction.h"

namespace accounts {

using common::FieldKind;
using common::Refusal;
using database::Sql;

namespace {

constexpr common::FormField<WalkInFields> walk_in_fields[] = {
    // code, name
    {&WalkInFields::code, {"walk_in_code", "&كود", FieldKind::code, {0, 0}, "", "", message::wrong_code}},
    {&WalkInFields::name,
     {"walk_in_name", "ال&اسم", FieldKind::text, {0, 1}, "zname", message::enter_customer}},
    // telephone, e-mail
    {&WalkInFields::phone, {"walk_in_phone", "ال&تليفون", FieldKind::digits, {1, 0}, "zphone"}},
    {&WalkInFields::mail, {"walk_in_mail", "البري&د الإلكتروني", FieldKind::digits, {1, 1}, "zmail"}},
};

WalkInCustomer walk_in_of(const database::Row& row) {
    return {row.integer("zcode"), false, row.text("zname"), row.text("zphone"), row.text("zmail")};
}

bool is_same(const database::Row& row, const WalkInCustomer& customer) {
    const auto equal = [&row](std::string_view column, std::string_view typed) {
        return common::trim_right(row.text(column)) == common::trim_right(typed);
    };
    return equal("zname", customer.name) && equal("zphone", customer.phone) && equal("zmail", customer.mail);
}

// Other tills may have given out the proposed code and those after it. If one of these rows equals this
// customer exactly, it was written by an attempt whose answer was lost, and he is not added twice.
void choose_code(database::Connection& connection, WalkInCustomer& customer) {
    std::int64_t last = 0;
    for (const database::Row& row :
         connection.query(Sql("select * from cust_cash where zcode >= ") + customer.code)) {
        last = std::max(last, row.integer("zcode"));
        if (!is_same(row, customer)) continue;
        customer.code = row.integer("zcode");
        customer.is_new = false;
        return;
    }
    if (last != 0) customer.code = last + 1;
}

void write(database::Connection& connection, WalkInCustomer& customer) {
    if (customer.is_new) {
        database::hold_numbers(connection);
        choose_code(connection, customer);
    }
    database::Recordset rows =
        customer.is_new
            ? database::Recordset(connection, "select * from cust_cash ")
            : database::Recordset(connection, Sql("select * from cust_cash where zcode = ") + customer.code);
    if (customer.is_new) {
        rows.add();
        rows.set("zcode", customer.code);
    }
    rows.set("zname", customer.name);
    rows.set("zphone", customer.phone);
    rows.set("zmail", customer.mail);
    rows.update();
}

}  // namespace

std::optional<WalkInCustomer> find_walk_in(database::Connection& connection, std::int64_t code) {
    const auto rows = connection.query(Sql("select * from cust_cash where zcode = ") + code);
    return rows.empty() ? std::nullopt : std::optional(walk_in_of(rows.front()));
}

void store_walk_in_customer(database::Connection& connection, WalkInCustomer& customer) {
    database::in_transaction(connection, [&] { write(connection, customer); });
    customer.is_new = false;
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

// An empty text lists all.
void CashCustomer::search(database::Fragment column, std::string_view text) {
    Sql statement(" select * from cust_cash ");
    if (!common::search_words(text).empty())
        statement += Sql("Where ") + database::contains_typed_words(column, text);
    results_.clear();
    for (const auto& row : connection_.query(statement))
        results_.push_back(walk_in_of(row));
}

void CashCustomer::search_names() {
    search("zname", fields.name);
}

void CashCustomer::search_phones() {
    search("zphone", fields.phone);
}

void CashCustomer::search_mails() {
    search("zmail", fields.mail);
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
        return Refusal("walk_in_code", common::message::no_such_cash_customer);
    }
    return std::nullopt;
}

std::optional<Refusal> CashCustomer::confirm() {
    const auto code = common::read_code(fields.code);
    if (!code) return Refusal("walk_in_code", message::wrong_code);
    const bool is_new = *code == proposed_ && loaded_ != *code;
    if (!is_new) {
        const auto found = find_walk_in(connection_, *code);
        if (!found) return Refusal("walk_in_code", common::message::no_such_cash_customer);
        // Load the fields of a code that was typed without Enter. Fields that were loaded already may have
        // been corrected, so they stay.
        if (loaded_ != *code) take(*found);
    }
    const database::TextLimits limits(connection_, "cust_cash");
    if (auto refused = database::check(walk_in_form(), fields, limits)) return refused;
    confirmed_ = {*code, is_new, fields.name, fields.phone, fields.mail};
    return std::nullopt;
}

}  // namespace accounts
