// The sums and rows of an account customer's statement: each source of movements with its debit and its
// credit.
#pragma once

#include <cstdint>

#include "common/date_time.h"
#include "database/connection.h"

namespace accounts {

// Up to where the sums count, and which amount of a voucher.
enum class SumsUpTo { before_date, and_on_date };
enum class VoucherAmount { whole, due };  // quan, quan1

// The opening balance plus all debits less all credits of the customer; sums rounded to two decimals.
double sum_account(database::Connection& connection, std::int64_t customer, const common::Date& date,
                   SumsUpTo up_to, VoucherAmount amount);

// Empties the shared scratch table tmp_acc and fills it with the customer's movements of the period. Two
// workstations that do so at one moment overwrite each other's rows.
void gather_movements(database::Connection& connection, std::int64_t customer, const common::Date& start,
                      const common::Date& end);

}  // namespace accounts
