#include "accounts/balances.h"

#include "common/numbers.h"
#include "database/recordset.h"

namespace accounts {

using database::Sql;

namespace {

Sql party_row(Ledger ledger, std::int64_t code) {
    return ledger == Ledger::customers ? Sql("select * from custdata where ccode = ") + code
                                       : Sql("select * from vendata where vcode = ") + code;
}
std::string_view balance_column(Ledger ledger) {
    return ledger == Ledger::customers ? "cacc" : "vacc";
}

constexpr int attempts = 10;
constexpr std::string_view changed_meanwhile = "40001";

}  // namespace

std::optional<Party> find_party(database::Connection& connection, Ledger ledger, std::int64_t code) {
    const auto rows = connection.query(party_row(ledger, code));
    if (rows.empty()) return std::nullopt;
    return Party{rows.front().text(ledger == Ledger::customers ? "cname" : "vname"),
                 rows.front().number(balance_column(ledger))};
}

Moved move_balance(database::Connection& connection, Ledger ledger, std::int64_t code, double by) {
    for (int attempt = 1;; ++attempt) {
        database::Recordset party(connection, party_row(ledger, code));
        if (party.empty())
            throw database::Error("02000", "the party of the balance has no row",
                                  party_row(ledger, code).text());
        Moved moved;
        moved.before = party.number(balance_column(ledger));
        moved.after = common::round_decimals(moved.before + by, 2);
        if (moved.before == moved.after) return moved;
        party.set(balance_column(ledger), moved.after);
        try {
            party.update();
            return moved;
        } catch (const database::Error& error) {
            if (error.sqlstate() != changed_meanwhile || attempt == attempts) throw;
        }
    }
}

}  // namespace accounts
