// A real shop on the embedded engine in a folder of its own, removed with the object; or in the database of
// the server that TALLVEX_TEST_SQLSERVER names, which it empties first.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "common/clock.h"
#include "database/connection.h"

namespace test {

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

// The server that tests and plays run on when the environment names one. Its database belongs to them alone.
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

// What a test that works on shop files says when it runs on a server.
inline constexpr const char* needs_shop_files = "skipped on a server: it works on shop files themselves";

// Makes the shop that tests copy.
void make_model_shop(const std::filesystem::path& file);

// Opens the shop of another process: the test server if there is one, else the file.
std::unique_ptr<database::Connection> open_shop(const std::filesystem::path& file);

// Base schema and upgrade list done, no rows but those that `seed_basic` gives: the settings row, store 1
// with drawers 1 and 2, store 2 with drawer 1, one worker, one manager who may do everything. It is a copy of
// the file that TALLVEX_MODEL_SHOP names, or of one that the test program makes when it first needs it.
class Shop {
  public:
    Shop();
    database::Connection& connection() { return *connection_; }
    // Runs one Transact-SQL statement.
    void sql(const std::string& statement);
    // The first cell of a query as text.
    std::string cell(const std::string& query);
    double number(const std::string& query);
    // The shop's file; there is none on a server.
    const std::filesystem::path& file() const { return file_; }
    // Makes a server answer "select getdate()" by the test's clock, which an embedded shop uses anyway.
    // Without a clock it is 2026/11/21 10:42.
    void go_by(common::Clock& clock);

  private:
    TemporaryFolder folder_;
    std::filesystem::path file_;
    std::unique_ptr<database::Connection> connection_;
};

}  // namespace test
