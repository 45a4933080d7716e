// A real server for the tests, when the environment names one.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "database/connection.h"

namespace test {

// The program's connection string for the server of TALLVEX_TEST_SQLSERVER
// ("server;port;database;user;password", the password last as it may hold ";"); nothing when the variable is
// not set. A value of another form throws.
std::optional<std::string> test_server();

// What a test that needs the server says when there is none.
inline constexpr const char* no_test_server = "skipped: TALLVEX_TEST_SQLSERVER is not set";

// Opens the server and empties its database of every table and view: it belongs to the tests alone.
std::unique_ptr<database::Connection> open_emptied_test_server();

}  // namespace test
