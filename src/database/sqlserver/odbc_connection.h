// A connection through the ODBC driver manager that survives the loss of its server.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>

#include "database/sqlserver/odbc_statement.h"
#include "database/sqlserver/odbc_watch.h"

namespace database {

// The text of the error if no server is found.
inline constexpr const char* server_unreachable = "SQL Server does not exist or access denied.";

struct OdbcSettings {
    std::string driver_string;      // the driver's own connection string
    std::string opening_statement;  // run on every new connection; may be empty
    int login_seconds = 5;          // to the end of the opening statement
    int query_seconds = 30;
    // Called before every connect to renew driver_string within the time, because the server may have moved.
    // Throws Error 08001 if the server is not found.
    std::function<std::string(std::chrono::milliseconds within)> find = {};
};

// Connects when constructed. If a statement finds the connection lost or waits longer than query_seconds, it
// throws 08S01 or HYT00 and closes the connection; the next statement connects again.
class OdbcConnection final : public Connection {
  public:
    explicit OdbcConnection(OdbcSettings settings);
    ~OdbcConnection() override;

    // A statement is durable as soon as the server has answered.
    void make_durable() override {}
    bool is_embedded() const override { return false; }
    Table describe(std::string_view table) override;
    Outcome run(std::string_view statement, const std::vector<Value>& values) override;

  private:
    void connect();
    void disconnect();
    // Runs `work` for at most so long and turns its failure into an Error about the statement.
    template <typename Work>
    auto guarded(std::string_view statement, std::chrono::milliseconds most, Work work);

    OdbcSettings settings_;
    OdbcHandle environment_;
    OdbcWatch watch_;
    OdbcHandle connection_;                                // none while the server is lost
    std::map<std::string, Table, std::less<>> described_;  // until a statement changes a table
};

}  // namespace database
