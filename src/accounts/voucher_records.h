// Vouchers as the table vencuspay holds them and as they are printed: their codes, the key to find one again,
// and their effect on the balance of their party.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/parties.h"
#include "common/date_time.h"
#include "common/form.h"
#include "database/recordset.h"

namespace accounts {

enum class VoucherKind { payment = 1, receipt = 2 };  // vencuspay.ptype
// vencuspay.Type; a null counts as cash. The screens offer cash and cheque; notices come from elsewhere and
// stay what they are when they are edited.
enum class Method { cheque = 0, cash = 1, discount_notice = 2, addition_notice = 3 };

// Returns true if a voucher raises the running balance of its party, false if it lowers it. A receipt lowers
// what a customer owes and raises what a vendor is owed, a payment the other way round; an addition notice
// has the opposite effect of the other methods.
constexpr bool raises_balance(VoucherKind kind, PartyKind party_kind, Method method) {
    const bool raises_customer = (kind == VoucherKind::payment) != (method == Method::addition_notice);
    return raises_customer != (party_kind == PartyKind::vendor);
}
// How much a voucher adds to the running balance of its party. The amount is an Amount, or unrounded.
template <typename Sum>
Sum effect_on_balance(VoucherKind kind, PartyKind party_kind, Method method, Sum amount) {
    return raises_balance(kind, party_kind, method) ? amount : -amount;
}

// The same for the rows of customers in a statement; vouchers without a method count as cash.
inline constexpr database::Fragment effect_on_customer =
    "case when (ptype = 1 and isnull([type],1) <> 3) or (ptype <> 1 and isnull([type],1) = 3) then quan "
    "else 0 - quan end";

std::string method_name(Method method);
// What a voucher is called on paper: "cash receipt".
std::string voucher_title(VoucherKind kind, Method method);
Method method_of(const database::Row& voucher);

// What identifies a stored voucher.
struct VoucherKey {
    PartyKind party_kind = PartyKind::customer;
    std::int64_t party = 0;
    common::Date date;
    common::Amount amount;
    std::string number;
    // The internal number (pay_id) distinguishes vouchers that are otherwise equal; 0 if there is none.
    std::int64_t id = 0;
};
VoucherKey key_of(const database::Row& voucher);

// Finds vouchers by everything in the key but the internal number.
database::Sql find_statement(VoucherKind kind, const VoucherKey& key);
// The row of a voucher, and a statement that selects it, possibly with others.
struct FoundVoucher {
    database::Sql statement;
    database::Row row;
};
std::optional<FoundVoucher> find_voucher(database::Connection& connection, VoucherKind kind,
                                         const VoucherKey& key);
// Moves to the voucher among the rows of such a statement.
void move_to(database::Recordset& rows, const VoucherKey& key);

struct VoucherEntry {
    VoucherKey key;
    std::string party_name;
    Method method = Method::cash;
};
struct VoucherPeriod {
    common::Date from;
    common::Date to;
};
common::FormTable<VoucherPeriod> voucher_period_form();
// The vouchers of a period, in the order of their internal numbers.
std::vector<VoucherEntry> list_vouchers(database::Connection& connection, VoucherKind kind,
                                        const VoucherPeriod& period);

// The highest number of the kind's vouchers plus 1, or the first free one from there on. Numbers such as
// "A12" count as 0, and cheque numbers do not raise the highest.
std::string propose_number(database::Connection& connection, VoucherKind kind);
// The same for direct receipts; each customer has a series of his own.
std::string propose_direct_number(database::Connection& connection, std::int64_t customer);
// The highest internal number plus 1.
std::int64_t next_voucher_id(database::Connection& connection);
// Returns true if the number was used before. Considers only receipts from customers and payments to vendors,
// as the shops' numbering always has.
bool is_duplicate(database::Connection& connection, VoucherKind kind, std::string_view number);

inline constexpr std::size_t note_length = 50;

// The fields of a voucher as they are typed.
struct VoucherFields {
    std::string number;
    common::Date date;
    std::optional<std::int64_t> party;
    std::string amount = "0.00";
    std::string discount = "0.00";
    std::string second_amount = "0.00";  // the part of the amount that is due already
    std::optional<std::int64_t> store;
    std::optional<std::int64_t> drawer;  // cash only
    std::optional<std::int64_t> bank;    // cheques only, as the next two
    common::Date cheque_date;
    std::string cheque_owner;
    std::optional<std::int64_t> representative;
    std::string note;  // its first note_length characters are kept
};
common::FormTable<VoucherFields> voucher_form();

struct VoucherRecord {
    VoucherKind kind = VoucherKind::receipt;
    PartyKind party_kind = PartyKind::customer;
    Method method = Method::cash;
    VoucherFields fields;
    common::Moment written_at;

    VoucherKey key() const;
};
// Sets every column of a voucher but its internal number; `former` is the method of an edited one.
void set_columns(database::Recordset& row, const VoucherRecord& record, std::optional<Method> former);

struct PrintedVoucher {
    std::string title;
    std::string number;
    common::Date date;
    std::string party;
    common::Amount amount;
    common::Amount discount;  // moves no balance
    std::string words;        // the amount in words
    std::string method;
    std::string place;  // the drawer or the bank
    std::string note;
    common::Amount balance_before;  // without the voucher, also if it was edited
    common::Amount balance_after;
};
// The printed form of a saved voucher whose party now has that balance; the caller fills in place and note.
PrintedVoucher printed_voucher(const VoucherRecord& record, const std::string& party_name,
                               common::Amount balance);

}  // namespace accounts
