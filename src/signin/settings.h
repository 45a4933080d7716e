// Reading the settings row for the whole run.
#pragma once

#include "database/connection.h"
#include "signin/session.h"

namespace signin {

// The row of `basic`; nulls become 0 and "", an empty picture name "logo.jpg". Without a row all is 0 and "".
Settings read_settings(database::Connection& connection);

}  // namespace signin
