// The stock that a shop begins with.
#pragma once

#include "common/date_time.h"
#include "database/connection.h"

namespace shop {

// Saves the present stock of every store as the opening stock of this moment and deletes the former one (rows
// of stk_f_q whose B_no is "opening"). Sales leave no separate row for what they take from stk, so only this
// shows later whether an interrupted save had moved its stock.
void remember_opening_stock(database::Connection& connection, const common::Moment& moment);

}  // namespace shop
