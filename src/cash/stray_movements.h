// Movements that name a drawer which their store does not have: no drawer's figures hold them.
#pragma once

#include <cstdint>

#include "common/date_time.h"
#include "database/connection.h"

namespace cash {

// How many cash movements of a store's day name no drawer of the store: a deleted one, a wrong one or none.
std::int64_t count_stray_movements(database::Connection& connection, std::int64_t store,
                                   const common::Date& day);

}  // namespace cash
