// The stock that a shop was opened with. Sales leave no row of their own for what they take from stk, so only
// this tells afterwards whether a save that was cut off had moved its stock.
#pragma once

#include "admin/checks.h"
#include "common/date_time.h"
#include "database/connection.h"

namespace admin {

// Remembers the present stock of every store as the opening stock of this moment, in place of what was
// remembered before (rows of stk_f_q whose B_no is "opening").
void remember_opening_stock(database::Connection& connection, const common::Moment& moment);

// Compares the stock of each item and store that has an opening stock with what its opening stock, invoice
// lines and store transfers since make. An item that other programs' tables have moved too (purchases,
// corrections, damaged goods) is no more than a note.
Findings check_stock(database::Connection& connection);

}  // namespace admin
