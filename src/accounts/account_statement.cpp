#include "accounts/account_statement.h"

#include "accounts/messages.h"
#include "accounts/statement_sums.h"
#include "common/numbers.h"

namespace accounts {

using common::format_amount;
using common::round_decimals;

const std::array<std::string_view, 6> statement_headings{"التاريخ", "دائن",       "مدين",
                                                         "الرصيد",  "البيــــان", "ملاحظــــــات"};

std::array<std::string, 6> StatementRow::cells() const {
    return {date, format_amount(credit), format_amount(debit), format_amount(balance), description, notes};
}

bool AccountStatement::refuse(std::string_view text) {
    services_.prompts.message(text, common::Icon::critical);
    return false;
}

void AccountStatement::open() {
    customers_ =
        database::choices(connection_.query("select * from custdata order by ccode"), "ccode", "cname");
    customer.reset();
    end = services_.clock.now().date;
    start = {end.year, end.month, 1};
    rows_.clear();
    shown_customer_ = 0;
    brought_forward_ = closing_ = debits_ = credits_ = 0;
}

std::string AccountStatement::customer_name() const {
    return name_of(customers_, shown_customer_);
}

bool AccountStatement::may_show() {
    if (!customer) return refuse(message::enter_customer);
    if (!common::is_valid(start) || !common::is_valid(end)) return refuse(message::wrong_date);
    if (end < start) return refuse(message::end_before_start);
    if (connection_.query(database::Sql("select ccode from custdata where ccode = ") + *customer).empty())
        return refuse(message::no_such_customer);
    return true;
}

bool AccountStatement::show() {
    if (!may_show()) return false;
    shown_customer_ = *customer;
    brought_forward_ =
        sum_account(connection_, *customer, start, SumsUpTo::before_date, VoucherAmount::whole);
    gather_movements(connection_, *customer, start, end);
    connection_.make_durable();

    rows_.clear();
    debits_ = credits_ = 0;
    double balance = brought_forward_;
    rows_.push_back({"", 0, 0, balance, std::string(message::balance_on) + common::date_text(start), ""});
    for (const auto& row : connection_.query("select * from tmp_acc order by date")) {
        StatementRow line;
        line.date = common::date_text(row.moment("date").date);
        line.credit = round_decimals(row.number("am1"), 2);
        line.debit = round_decimals(row.number("am2"), 2);
        balance = round_decimals(balance - line.credit + line.debit, 2);
        line.balance = balance;
        line.description = row.text("note1");
        line.notes = row.text("note2");
        credits_ = round_decimals(credits_ + line.credit, 2);
        debits_ = round_decimals(debits_ + line.debit, 2);
        rows_.push_back(std::move(line));
    }
    closing_ = balance;
    rows_.push_back({"", 0, 0, balance, std::string(message::balance_on) + common::date_text(end), ""});
    return true;
}

void AccountStatement::check_arrears() {
    if (!may_show()) return;
    // What is due of each voucher instead of the whole of it; the opening balance is due from the start.
    const double arrears =
        sum_account(connection_, *customer, end, SumsUpTo::and_on_date, VoucherAmount::due);
    if (arrears > 0) {
        services_.prompts.message(std::string(message::arrears_of) + format_amount(arrears),
                                  common::Icon::exclamation);
    } else {
        services_.prompts.message(message::no_arrears, common::Icon::information);
    }
}

}  // namespace accounts
