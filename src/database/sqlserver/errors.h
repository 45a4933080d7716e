// The server's error numbers, and what they mean to the program; its texts come in any language.
#pragma once

#include <string_view>

#include "database/error.h"
#include "database/sqlserver/odbc_text.h"

namespace database {

// The database that was asked for is missing, or closed to this login.
bool is_missing_database(int number);

// An Error with the server's text, and with the SQLSTATE that the embedded engine gives for the same failure.
Error server_error(const Diagnostic& said, std::string_view statement);

}  // namespace database
