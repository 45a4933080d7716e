#include "accounts/direct_receipt.h"

#include <stdexcept>

#include "accounts/messages.h"
#include "common/messages.h"
#include "common/typed.h"
#include "database/form.h"

namespace accounts {

using common::FieldKind;

namespace {

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
        return common::Refusal("direct_customer", common::message::no_such_customer);
    return std::nullopt;
}

DirectReceipt write_direct_receipt(database::Connection& connection, const signin::Session& session,
                                   const common::Services& services, std::int64_t customer,
                                   const common::Date& date, common::Amount amount) {
    if (amount <= common::Amount()) throw std::invalid_argument("a receipt of nothing");
    const auto party = find_party(connection, PartyKind::customer, customer);
    if (!party) throw std::invalid_argument("a receipt of a customer without a row");

    VoucherRecord record{VoucherKind::receipt, PartyKind::customer, Method::cash, {}, services.clock.now()};
    record.fields.number = propose_direct_number(connection, customer);
    record.fields.date = date;
    record.fields.party = customer;
    record.fields.amount = record.fields.second_amount = amount.text();
    record.fields.store = session.store_code;
    record.fields.drawer = session.cash_point;
    record.fields.note = "قبض مباشر من الكاشير";  // direct receipt by the cashier
    DirectReceipt receipt{VoucherSaving(connection, session, services).add(record), {}};
    if (receipt.saved.outcome != SavedVoucher::Outcome::saved) return receipt;
    receipt.paper = printed_voucher(record, party->name, receipt.saved.balance);
    receipt.paper.place = session.drawer_name;
    return receipt;
}

}  // namespace accounts
