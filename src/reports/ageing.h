// How old the debts are: of customers to the shop, and of the shop to its suppliers. Payments are taken off
// the oldest debts, whatever they were made for, so what is still owed is in the newest ones.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "accounts/parties.h"
#include "common/date_time.h"
#include "database/connection.h"

namespace reports {

// Up to 30 days, to 60, to 90, older.
inline constexpr std::size_t age_count = 4;

struct AgedParty {
    std::int64_t code = 0;
    std::string name;
    double balance = 0;                         // what is owed; below zero what was paid in advance
    std::array<double, age_count> by_age = {};  // adds up to the balance if that is above zero
};

// The customers who owe something or have something to their credit; for vendors, those to whom the shop owes
// something.
std::vector<AgedParty> aged_parties(database::Connection& connection, accounts::PartyKind kind,
                                    const common::Date& today);

// A document that made a debt, with the part of it that is still owed.
struct OpenDebt {
    common::Date date;
    std::string document;
    std::string number;
    double amount = 0;
    double open = 0;
    long age = 0;  // in days
};
// The newest first. What they do not explain of the balance comes last, as an old balance without a document.
std::vector<OpenDebt> open_debts(database::Connection& connection, accounts::PartyKind kind,
                                 std::int64_t party, const common::Date& today);

}  // namespace reports
