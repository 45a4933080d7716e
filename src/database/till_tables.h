// Tables that only tills write, all named till_… A shop may lack them, if no till is allowed to create
// tables, and is used without them then.
#pragma once

#include <string_view>

#include "database/error.h"

namespace database {

// SQLSTATE of the Error for a table that is not there.
inline constexpr std::string_view no_such_table = "42S02";

// Runs an action on such a table; without the table it does nothing.
template <typename Action>
void unless_table_is_missing(const Action& action) {
    try {
        action();
    } catch (const Error& error) {
        if (error.sqlstate() != no_such_table) throw;
    }
}

}  // namespace database
