#include "accounts/cash_customer.h"

#include "accounts/lists.h"
#include "accounts/messages.h"
#include "common/text.h"

namespace accounts {

using database::quoted;
using database::Sql;

namespace {

WalkIn taken(const database::Row& row) {
    return {row.integer("zcode"), false, row.text("zname"), row.text("zphone"), row.text("zmail")};
}

}  // namespace

bool CashCustomer::refuse(std::string_view text) {
    services_.prompts.message(text, common::Icon::critical);
    return false;
}

void CashCustomer::open() {
    proposed_ = database::integer_of(connection_.scalar("select max(zcode) as last_ from cust_cash")) + 1;
    loaded_ = 0;
    code = std::to_string(proposed_);
    name.clear();
    phone.clear();
    mail.clear();
    results_.clear();
}

void CashCustomer::search(const Sql& condition) {
    results_.clear();
    for (const auto& row : connection_.query(Sql(" select * from cust_cash ") + condition))
        results_.push_back(taken(row));
}

void CashCustomer::search_names() {
    search(name.empty() ? Sql("") : Sql("Where zname like ") + quoted("%" + name + "%"));
}

void CashCustomer::search_phones() {
    search(phone.empty() ? Sql("") : Sql("Where zphone like ") + quoted("%" + phone + "%"));
}

void CashCustomer::search_mails() {
    search(mail.empty() ? Sql("") : Sql("Where zmail like ") + quoted("%" + mail + "%"));
}

void CashCustomer::choose(std::size_t row) {
    if (row >= results_.size()) return;
    const WalkIn& chosen = results_[row];
    loaded_ = chosen.code;
    code = std::to_string(chosen.code);
    name = chosen.name;
    phone = chosen.phone;
    mail = chosen.mail;
}

bool CashCustomer::enter_code() {
    const auto wanted = read_code(code);
    if (!wanted) return refuse(message::wrong_code);
    const auto rows = connection_.query(Sql("select * from cust_cash where zcode = ") + *wanted);
    if (rows.empty()) {
        // The proposed code is the new customer's, whose fields are about to be typed.
        return *wanted == proposed_ || refuse(message::no_such_cash_customer);
    }
    const WalkIn found = taken(rows.front());
    loaded_ = *wanted;
    name = found.name;
    phone = found.phone;
    mail = found.mail;
    return true;
}

std::optional<WalkIn> CashCustomer::confirm() {
    const auto wanted = read_code(code);
    if (!wanted) {
        refuse(message::wrong_code);
        return std::nullopt;
    }
    WalkIn customer{*wanted, *wanted == proposed_ && loaded_ != *wanted, name, phone, mail};
    if (!customer.is_new) {
        const auto rows = connection_.query(Sql("select * from cust_cash where zcode = ") + *wanted);
        if (rows.empty()) {
            refuse(message::no_such_cash_customer);
            return std::nullopt;
        }
        // A code that was typed but not entered brings its own fields; loaded ones may have been corrected.
        if (loaded_ != *wanted) customer = taken(rows.front());
    }
    if (common::trim(customer.name).empty()) {
        refuse(message::enter_customer);
        return std::nullopt;
    }
    const database::TextLimits limits(connection_, "cust_cash");
    if (!limits.fits("zname", customer.name) || !limits.fits("zphone", customer.phone) ||
        !limits.fits("zmail", customer.mail)) {
        refuse(message::too_long);
        return std::nullopt;
    }
    return customer;
}

}  // namespace accounts
