// The logic of Cust_cash: finds or takes in the walk-in customer of an invoice. It writes nothing; the row is
// stored when the invoice is saved.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/services.h"
#include "database/connection.h"

namespace accounts {

struct WalkIn {
    std::int64_t code = 0;
    bool is_new = false;
    std::string name;
    std::string phone;
    std::string mail;
};

class CashCustomer {
  public:
    CashCustomer(database::Connection& connection, common::Services services)
        : connection_(connection), services_(services) {}

    // Proposes the next code; fields and results are empty.
    void open();

    // Each lists the customers whose field holds the text, an empty one all of them.
    void search_names();
    void search_phones();
    void search_mails();
    // Takes a row of the results into the fields.
    void choose(std::size_t row);
    // Enter in the code field: loads that customer. False with a message when there is none.
    bool enter_code();
    // The customer for the invoice; none with a message when the code has no row or a field is wrong.
    std::optional<WalkIn> confirm();

    std::string code;
    std::string name;
    std::string phone;
    std::string mail;

    const std::vector<WalkIn>& results() const { return results_; }

  private:
    void search(const database::Sql& condition);
    bool refuse(std::string_view text);
    database::Connection& connection_;
    common::Services services_;
    std::int64_t proposed_ = 1;
    std::int64_t loaded_ = 0;  // the code whose row the fields came from
    std::vector<WalkIn> results_;
};

}  // namespace accounts
