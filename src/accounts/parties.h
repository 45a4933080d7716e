// The parties of vouchers, customers and vendors, and their running balances: what a customer owes
// (custdata.cacc) and what a vendor is owed (vendata.vacc).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/amount.h"
#include "common/choice.h"
#include "database/connection.h"

namespace accounts {

// vencuspay.ztype. Both kinds of customer have their rows in custdata.
enum class PartyKind { vendor = 1, customer = 2, second_customer = 3 };

struct Party {
    std::string name;
    double balance = 0;
};
// Nothing if the party has no row.
std::optional<Party> find_party(database::Connection& connection, PartyKind kind, std::int64_t code);

std::vector<common::Choice> load_parties(database::Connection& connection, PartyKind kind);

// A code for a new party, above those of all customers and vendors: the statement of a customer counts
// purchases under his code.
std::int64_t next_party_code(database::Connection& connection);

// Adds to a party's balance and returns the new one. Both keep all their decimals until they are shown,
// because rows of other programs may have more than two. Throws Error 40001 if another till changes the row
// at the same moment, and Error 02000 if there is no row.
common::Amount move_balance(database::Connection& connection, PartyKind kind, std::int64_t code, double by);

struct CustomerRow {
    std::int64_t code = 0;
    std::string name;
    std::string phone;  // the mobile number if there is no other
    double balance = 0;
};
// All account customers, in order of their codes.
std::vector<CustomerRow> list_customers(database::Connection& connection);

}  // namespace accounts
