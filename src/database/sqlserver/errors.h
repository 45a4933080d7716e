// The server's error numbers, and what they mean to the program; its texts come in any language.
#pragma once

#include <string_view>

#include "database/error.h"
#include "database/sqlserver/odbc_text.h"

namespace database {

// The database that was asked for is missing, or closed to this login.
bool is_missing_database(int number);

// An Error with the SQLSTATE that the embedded engine gives for the same, and the server's text. What the
// program tells the cashier apart has its English words in front: "Cannot open database: ", "Login failed: ",
// "The disk is full: ", "The database is read-only: ".
Error server_error(const Diagnostic& said, std::string_view statement);

}  // namespace database
