// The server that tests and plays run on when the environment names one. Its database belongs to them alone.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "database/connection.h"

namespace test {

struct TestServer {
    std::string source;  // "host,port"
    std::string database;
    std::string user;
    std::string password;

    // The program's connection string.
    std::string connection_string() const;
};

// What TALLVEX_TEST_SQLSERVER names: "server;port;database;user;password", the password last as it may hold
// ";". Nothing when it is not set; a value of another form throws std::runtime_error.
std::optional<TestServer> test_server();

// Opens the server and empties its database of every table and view. A database whose name has no "test" in
// it is somebody's shop: std::runtime_error.
std::unique_ptr<database::Connection> open_emptied(const TestServer& server);

// What a test that needs the server says when there is none.
inline constexpr const char* no_test_server = "skipped: TALLVEX_TEST_SQLSERVER is not set";
// What a test says on a server that works on shop files themselves.
inline constexpr const char* needs_shop_files = "skipped on a server: it works on shop files themselves";

}  // namespace test
