// Translates the server's error numbers; its texts come in any language.
#pragma once

#include <string_view>

#include "database/error.h"
#include "database/sqlserver/odbc_text.h"

namespace database {

// Returns true if the error means that the database is missing or closed to this login.
bool is_missing_database(int number);

// An Error with the server's text, and with the SQLSTATE that the embedded engine gives for the same failure.
Error server_error(const Diagnostic& said, std::string_view statement);

}  // namespace database
