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

// Reads TALLVEX_TEST_SQLSERVER: "server;port;database;user;password", the password last because it may hold
// ";". Returns nothing if it is not set. Throws std::runtime_error for any other form.
std::optional<TestServer> test_server();

// Opens the server and drops every table and view of its database. Throws std::runtime_error if the
// database's name has no "test" in it, since it may be somebody's shop.
std::unique_ptr<database::Connection> open_emptied(const TestServer& server);

// What a test says on a server that works on shop files themselves.
inline constexpr const char* needs_shop_files = "skipped on a server: it works on shop files themselves";

}  // namespace test
