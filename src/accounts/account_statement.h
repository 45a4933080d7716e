// The logic of Form39: an account customer's movements between two dates with the running balance, and the
// check for arrears.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/lists.h"
#include "common/services.h"
#include "database/connection.h"

namespace accounts {

// Date, credit, debit, balance, description, notes.
extern const std::array<std::string_view, 6> statement_headings;

struct StatementRow {
    std::string
        date;  // "yyyy/mm/dd"; empty on the rows of the balance brought forward and the closing balance
    double credit = 0;
    double debit = 0;
    double balance = 0;
    std::string description;
    std::string notes;
    // Under the headings, amounts as "0.00".
    std::array<std::string, 6> cells() const;
};

class AccountStatement {
  public:
    AccountStatement(database::Connection& connection, common::Services services)
        : connection_(connection), services_(services) {}

    // The customers; the period from the first of this month to today.
    void open();

    // Gathers the movements in the shared scratch table and lists them between the balance brought forward
    // and the closing balance. False with a message when no customer is chosen or the end lies before the
    // start.
    bool show();

    // Tells whether the customer owes anything that is due up to and including the end date.
    void check_arrears();

    std::optional<std::int64_t> customer;
    common::Date start;
    common::Date end;

    const std::vector<common::Choice>& customers() const { return customers_; }
    std::string customer_name() const;  // of the customer shown
    const std::vector<StatementRow>& rows() const { return rows_; }
    double brought_forward() const { return brought_forward_; }
    double closing() const { return closing_; }
    double debits() const { return debits_; }    // of the period
    double credits() const { return credits_; }  // of the period

  private:
    bool refuse(std::string_view text);
    bool may_show();
    database::Connection& connection_;
    common::Services services_;
    std::vector<common::Choice> customers_;
    std::int64_t shown_customer_ = 0;
    std::vector<StatementRow> rows_;
    double brought_forward_ = 0;
    double closing_ = 0;
    double debits_ = 0;
    double credits_ = 0;
};

}  // namespace accounts
