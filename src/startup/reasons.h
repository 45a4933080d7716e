// Why the shop's database could not be used, in words for the cashier.
#pragma once

#include <string>
#include <string_view>

#include "database/error.h"

namespace startup {

// The reason of a database error in Arabic; `database` is the catalog or the shop's file, as the connection
// file names it.
std::string reason_of(const database::Error& error, std::string_view database);

}  // namespace startup
