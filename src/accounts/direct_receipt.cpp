#include "accounts/direct_receipt.h"

#include <stdexcept>

#include "accounts/balances.h"
#include "common/numbers.h"
#include "database/recordset.h"

namespace accounts {

using database::quoted;
using database::Sql;

namespace {

// Above it doubles no longer count one by one.
constexpr double most_countable = 9e15;

// The highest number of the customer's receipts plus 1. Numbers are texts, of which "9" is above "10", so
// that a number which is taken already is passed over.
std::string next_number(database::Connection& connection, std::int64_t customer) {
    const auto highest = connection.scalar(
        Sql("select max(chkno) as last_ from vencuspay where ztype = 2 and ptype = 2 and vcode=") + customer);
    double number = common::numeric_value(database::text_of(highest)) + 1;
    if (number > most_countable) number = 1;
    for (;; ++number) {
        const std::string text = common::shortest_text(number);
        const auto taken =
            connection.query(Sql("select chkno from vencuspay where ztype = 2 and ptype = 2 and vcode=") +
                             customer + " and chkno = " + quoted(text));
        if (taken.empty()) return text;
    }
}

template <typename Action>
void tried_twice(const Action& action) {
    try {
        action();
    } catch (const database::Error& error) {
        if (error.is_connection_lost()) throw;
        action();
    }
}

}  // namespace

std::string write_direct_receipt(database::Connection& connection, const signin::Session& session,
                                 common::Clock& clock, std::int64_t customer, const common::Date& date,
                                 double amount) {
    const double paid = common::round_decimals(amount, 2);
    if (!(paid > 0)) throw std::invalid_argument("a receipt of nothing");
    if (!find_party(connection, Ledger::customers, customer))
        throw std::invalid_argument("a receipt of a customer without a row");

    const std::string number = next_number(connection, customer);
    database::Recordset voucher(connection, "select * from vencuspay");
    voucher.add();
    voucher.set("vcode", customer);
    voucher.set("Date", date);
    voucher.set("Type", 1);
    voucher.set("quan", paid);
    voucher.set("dis", 0);
    voucher.set("quan1", paid);
    voucher.set("note", "قبض مباشر من الكاشير");  // direct receipt by the cashier
    voucher.set("ztype", 2);
    voucher.set("ptype", 2);
    voucher.set("stcode", session.store_code);
    voucher.set("cash_n", session.cash_point);
    voucher.set("chkno", number);
    voucher.set("time_", database::Value(clock.now()));
    voucher.update();
    // The money is in the drawer and the voucher is written: an error that passes must not make the cashier
    // write it once more, so what follows is tried again first.
    tried_twice([&] { move_balance(connection, Ledger::customers, customer, -paid); });
    tried_twice([&] { connection.make_durable(); });
    return number;
}

}  // namespace accounts
