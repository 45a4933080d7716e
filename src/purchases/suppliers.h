// The suppliers of the shop (the table vendata): their list and the card of one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/amount.h"
#include "common/choice.h"
#include "common/form.h"
#include "common/refusal.h"
#include "database/connection.h"
#include "signin/session.h"

namespace purchases {

struct SupplierRow {
    std::int64_t code = 0;
    std::string name;
    std::string phone;
    common::Amount balance;  // what he is owed
};
// All of them (0) first.
std::vector<common::Choice> suppliers_to_choose(database::Connection& connection);
std::vector<SupplierRow> list_suppliers(database::Connection& connection);

struct SupplierCard {
    std::string number;  // fixed while editing
    std::string name;
    std::string phone;
    std::string address;
    std::string opening = "0.00";
    bool owes_us = false;  // the opening balance is what he owes the shop
    std::string note;
    bool operator==(const SupplierCard&) const = default;
};
common::FormTable<SupplierCard> supplier_form();

class Supplier {
  public:
    Supplier(database::Connection& connection, const signin::Session& session)
        : connection_(connection), session_(session) {}

    // Proposes a number that neither a supplier nor an account customer has.
    void open_new();
    // Refused if there is no such supplier.
    std::optional<common::Refusal> open_edit(std::int64_t code);
    std::string_view title() const;

    // A changed opening balance moves what the supplier is owed. If another office has changed the card since
    // it was opened, the refusal names what changed, and nothing is written.
    std::optional<common::Refusal> save();

    SupplierCard card;

    bool is_editing() const { return editing_.has_value(); }
    // The number of the supplier that was saved last.
    std::int64_t code() const { return code_; }

  private:
    std::optional<common::Refusal> check();
    std::optional<common::Refusal> write(common::Amount opening);

    database::Connection& connection_;
    const signin::Session& session_;
    std::optional<std::int64_t> editing_;
    SupplierCard seen_;
    std::int64_t code_ = 0;
};

}  // namespace purchases
