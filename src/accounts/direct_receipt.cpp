#include "accounts/direct_receipt.h"

#include <stdexcept>

#include "accounts/messages.h"
#include "common/messages.h"
#include "common/numbers.h"
#include "common/typed.h"
#include "database/form.h"

namespace accounts {

using common::FieldKind;
using database::quoted;
using database::Sql;

namespace {

// Above this doubles no longer count one by one.
constexpr double most_countable = 9e15;

// The highest number of the customer's receipts plus 1. Numbers are texts, and "9" is above "10", so used
// numbers are skipped.
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
auto tried_twice(const Action& action) {
    try {
        return action();
    } catch (const database::Error& error) {
        if (error.is_connection_lost()) throw;
        return action();
    }
}

constexpr common::FormField<DirectReceiptFields> direct_fields[] = {
    // customer
    {&DirectReceiptFields::customer,
     {"direct_customer", "ال&عميل", FieldKind::choice, {0, 0, 2}, "", message::enter_customer}},
    // balance before, balance after
    {{}, {"direct_balance", "الرصيد قبل", FieldKind::figure, {1, 0}}},
    {{}, {"direct_after", "الرصيد بعد", FieldKind::figure, {1, 1}}},
    // amount received
    {&DirectReceiptFields::amount, {"direct_amount", "الم&بلغ المقبوض", FieldKind::amount, {2, 0, 2}}},
};

}  // namespace

common::FormTable<DirectReceiptFields> direct_receipt_form() {
    return direct_fields;
}

std::optional<common::Refusal> check_direct_receipt(database::Connection& connection,
                                                    const DirectReceiptFields& fields) {
    const database::TextLimits limits(connection, "vencuspay");
    if (auto refused = database::check(direct_receipt_form(), fields, limits)) return refused;
    if (common::read_amount(fields.amount).value.is_zero())
        return common::Refusal("direct_amount", common::message::enter_value);
    if (!find_party(connection, PartyKind::customer, *fields.customer))
        return common::Refusal("direct_customer", message::no_such_customer);
    return std::nullopt;
}

PrintedVoucher write_direct_receipt(database::Connection& connection, const signin::Session& session,
                                    common::Clock& clock, std::int64_t customer, const common::Date& date,
                                    common::Amount amount) {
    if (amount <= common::Amount()) throw std::invalid_argument("a receipt of nothing");
    const auto party = find_party(connection, PartyKind::customer, customer);
    if (!party) throw std::invalid_argument("a receipt of a customer without a row");

    const VoucherKey key{PartyKind::customer, customer, date, amount.value(),
                         next_number(connection, customer)};
    database::Recordset voucher(connection, "select * from vencuspay");
    voucher.add();
    voucher.set("vcode", customer);
    voucher.set("Date", date);
    voucher.set("Type", static_cast<int>(Method::cash));
    voucher.set("quan", amount.value());
    voucher.set("dis", 0);
    voucher.set("quan1", amount.value());
    voucher.set("note", "قبض مباشر من الكاشير");  // direct receipt by the cashier
    voucher.set("ztype", static_cast<int>(PartyKind::customer));
    voucher.set("ptype", static_cast<int>(VoucherKind::receipt));
    voucher.set("stcode", session.store_code);
    voucher.set("cash_n", session.cash_point);
    voucher.set("chkno", key.number);
    voucher.set("time_", database::Value(clock.now()));
    voucher.update();
    // The money is in the drawer and the voucher is written. A passing error must not make the cashier write
    // it once more, so what follows is tried again first.
    const common::Amount effect =
        effect_on_balance(VoucherKind::receipt, PartyKind::customer, Method::cash, amount);
    const common::Amount balance =
        tried_twice([&] { return move_balance(connection, PartyKind::customer, customer, effect); });
    tried_twice([&] { connection.make_durable(); });
    PrintedVoucher paper = printed_voucher(VoucherKind::receipt, Method::cash, key, party->name, balance);
    paper.place = session.drawer_name;
    return paper;
}

}  // namespace accounts
