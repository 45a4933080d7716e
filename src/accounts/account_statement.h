// The logic of the screen Form39: an account customer's movements between two dates with the running balance,
// and the check for arrears.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/amount.h"
#include "common/choice.h"
#include "common/form.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"

namespace accounts {

// Date, credit, debit, balance, description, notes.
extern const std::array<std::string_view, 6> statement_headings;

struct StatementRow {
    std::string date;  // "yyyy/mm/dd"; empty for the balance brought forward and the closing balance
    common::Amount credit;
    common::Amount debit;
    common::Amount balance;
    std::string description;
    std::string notes;
    // In the order of the headings.
    std::array<std::string, 6> cells() const;
};

struct StatementFields {
    std::optional<std::int64_t> customer;
    common::Date start;
    common::Date end;
};
common::FormTable<StatementFields> statement_form();

class AccountStatement {
  public:
    AccountStatement(database::Connection& connection, common::Services services)
        : connection_(connection), services_(services) {}

    // Reads the customers; the period is from the first of this month to today.
    void open();

    // Gathers the movements in the scratch table tmp_acc and lists them between the balance brought forward
    // and the closing balance. All workstations share the table: two that do so at the same time overwrite
    // each other's rows.
    std::optional<common::Refusal> show();

    // Says whether the customer owes anything that is due up to and including the end date.
    std::optional<common::Refusal> check_arrears();

    StatementFields fields;

    const std::vector<common::Choice>& customers() const { return customers_; }
    std::string customer_name() const;  // of the customer shown
    const std::vector<StatementRow>& rows() const { return rows_; }
    common::Amount brought_forward() const { return brought_forward_; }
    common::Amount closing() const { return closing_; }
    common::Amount debits() const { return debits_; }    // of the period
    common::Amount credits() const { return credits_; }  // of the period

  private:
    std::optional<common::Refusal> check();
    database::Connection& connection_;
    common::Services services_;
    std::vector<common::Choice> customers_;
    std::int64_t shown_customer_ = 0;
    std::vector<StatementRow> rows_;
    common::Amount brought_forward_;
    common::Amount closing_;
    common::Amount debits_;
    common::Amount credits_;
};

}  // namespace accounts
