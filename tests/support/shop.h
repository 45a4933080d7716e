// A real shop on the embedded engine in a folder of its own, removed with the object; or in the database of
// the server that TALLVEX_TEST_SQLSERVER names, which it empties first.
#pragma once

#include <filesystem>
#include <memory>

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

// Opens the shop of another process: the test server if there is one, else the file.
std::unique_ptr<database::Connection> open_shop(const std::filesystem::path& file);

// Base schema and upgrade list done, no rows but those that `seed_basic` gives: the settings row, store 1
// with drawers 1 and 2, store 2 with drawer 1, one worker, one manager who may do everything. The schema is
// made once per test program and copied.
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
