// The codes of vouchers and what finds one again.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace accounts {

enum class VoucherKind { payment = 1, receipt = 2 };                     // vencuspay.ptype
enum class PartyKind { vendor = 1, customer = 2, second_customer = 3 };  // vencuspay.ztype
// vencuspay.Type; the screens offer cash and cheque, notices come from elsewhere and keep their kind when
// edited.
enum class Method { cheque = 0, cash = 1, discount_notice = 2, addition_notice = 3 };

// What finds a voucher again.
struct VoucherKey {
    PartyKind party_kind = PartyKind::customer;
    std::int64_t party = 0;
    common::Date date;
    double amount = 0;
    std::string number;
};

// Vouchers of a period, to choose one for editing, in the order of their internal numbers.
struct VoucherEntry {
    VoucherKey key;
    std::string party_name;
    Method method = Method::cash;
};
std::vector<VoucherEntry> list_vouchers(database::Connection& connection, VoucherKind kind,
                                        const common::Date& from, const common::Date& to);

}  // namespace accounts
