// The running balances of parties: custdata.cacc, what a customer owes; vendata.vacc, what a vendor is owed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "database/connection.h"

namespace accounts {

enum class Ledger { customers, vendors };

struct Party {
    std::string name;
    double balance = 0;
};
// None when the party has no row.
std::optional<Party> find_party(database::Connection& connection, Ledger ledger, std::int64_t code);

// Adds to a party's balance and returns it before and after. A row that other tills are changing at the same
// moment is read again; one that has vanished throws Error 02000.
struct Moved {
    double before = 0;
    double after = 0;
};
Moved move_balance(database::Connection& connection, Ledger ledger, std::int64_t code, double by);

}  // namespace accounts
