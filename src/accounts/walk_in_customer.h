// The walk-in customers of invoices, and the logic of the screen Cust_cash, where one is found or entered.
// The screen writes nothing; the row is stored when the invoice is saved.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/form.h"
#include "common/refusal.h"
#include "database/connection.h"

namespace accounts {

// A walk-in customer whose data were typed or chosen for an invoice.
struct WalkInCustomer {
    std::int64_t code = 0;
    bool is_new = false;
    std::string name;
    std::string phone;
    std::string mail;
};

// Nothing if no walk-in customer has the code.
std::optional<WalkInCustomer> find_walk_in(database::Connection& connection, std::int64_t code);

// Adds a new customer under the proposed code, or under the next free one if another till has used that code
// meanwhile. Writes name, phone and mail of a known customer. Afterwards the customer is a known one and has
// the code of his row.
void store_walk_in_customer(database::Connection& connection, WalkInCustomer& customer);

struct WalkInFields {
    std::string code;
    std::string name;
    std::string phone;
    std::string mail;
};
common::FormTable<WalkInFields> walk_in_form();

class CashCustomer {
  public:
    explicit CashCustomer(database::Connection& connection) : connection_(connection) {}

    // Proposes the next code; the other fields and the results are empty.
    void open();

    // Each lists the customers whose field contains the words; an empty text lists all.
    void search_names();
    void search_phones();
    void search_mails();
    // Takes a row of the results into the fields.
    void choose(std::size_t row);
    // Loads the customer of the code typed. The proposed code belongs to the new customer and loads nothing.
    std::optional<common::Refusal> enter_code();
    // Checks the fields and makes them the invoice's customer.
    std::optional<common::Refusal> confirm();
    const WalkInCustomer& confirmed() const { return confirmed_; }

    WalkInFields fields;

    const std::vector<WalkInCustomer>& results() const { return results_; }

  private:
    void search(database::Fragment column, std::string_view text);
    void take(const WalkInCustomer& customer);
    database::Connection& connection_;
    std::int64_t proposed_ = 1;
    std::int64_t loaded_ = 0;  // the code whose row the fields came from
    std::vector<WalkInCustomer> results_;
    WalkInCustomer confirmed_;
};

}  // namespace accounts
