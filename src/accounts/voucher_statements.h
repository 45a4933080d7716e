// The statements behind the voucher screens: numbers, parties, finding a voucher again, writing one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/balances.h"
#include "accounts/voucher_kinds.h"
#include "database/connection.h"

namespace accounts {

inline constexpr std::size_t note_length = 50;

Ledger ledger_of(PartyKind kind);
database::Sql parties_statement(PartyKind kind);

// The highest number of the kind's vouchers plus 1. Numbers that are no numbers count as 0.
std::string propose_number(database::Connection& connection, VoucherKind kind);

// Whether the number was used before. It sees receipts of customers and payments to vendors only, a limit
// that the shops' numbering lives with.
bool is_duplicate(database::Connection& connection, VoucherKind kind, std::string_view number);

database::Sql find_statement(VoucherKind kind, const VoucherKey& key);

struct VoucherRow {
    VoucherKind kind = VoucherKind::receipt;
    VoucherKey key;
    Method method = Method::cash;
    double discount = 0;
    double second_amount = 0;
    std::string note;
    std::optional<std::int64_t> representative;
    std::int64_t store = 0;
    std::optional<std::int64_t> drawer;
    std::optional<std::int64_t> bank;
    common::Date cheque_date;
    std::string cheque_owner;
    common::Moment written_at;
};
void add_voucher(database::Connection& connection, const VoucherRow& row);
// Writes over the voucher found by its former key. False, and nothing is written, when it is gone or its
// cells are no longer those seen (none seen: not compared).
bool rewrite_voucher(database::Connection& connection, const VoucherRow& row, const VoucherKey& former,
                     const std::vector<database::Value>& seen);

std::string printed_title(VoucherKind kind, Method method);
std::string method_name(Method method);
// The amount in words, thousands included.
std::string words_of(double amount);

}  // namespace accounts
