// A connection through the ODBC driver manager that survives the loss of its server.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>

#include "database/sqlserver/odbc_statement.h"
#include "database/sqlserver/odbc_watch.h"

namespace database {

// The description of every connect that finds no server; start-up looks for it.
inline constexpr const char* server_unreachable = "SQL Server does not exist or access denied.";

struct OdbcRoad {
    std::string driver_string;      // the driver's own connection string
    std::string opening_statement;  // run on every new connection; may be empty
    int login_seconds = 5;          // to the end of the opening statement
    int query_seconds = 30;
    bool is_sqlserver = false;  // statements are put as it needs them (server_text)
    // Gives driver_string anew before every connect, within the time: the server may have moved meanwhile.
    // Throws Error 08001 when it is not found.
    std::function<std::string(std::chrono::milliseconds within)> find = {};
};

// Connects when made. A statement that finds the connection lost, or waits longer than query_seconds, throws
// 08S01 or HYT00 and drops the connection; the next one makes a new one first, opening statement included.
class OdbcConnection final : public Connection {
  public:
    explicit OdbcConnection(OdbcRoad road);
    ~OdbcConnection() override;

    // Every statement is durable when the server has answered it.
    void make_durable() override {}
    bool is_embedded() const override { return false; }
    Table describe(std::string_view table) override;
    Outcome run(std::string_view statement, const std::vector<Value>& values) override;

  private:
    void connect();
    void disconnect();
    // Runs something on a living connection, for as long at most, and turns its failure into an Error about
    // the statement.
    template <typename Work>
    auto guarded(std::string_view statement, std::chrono::milliseconds most, Work work);

    OdbcRoad road_;
    OdbcHandle environment_;
    OdbcWatch watch_;
    OdbcHandle connection_;                                // none while the server is lost
    std::map<std::string, Table, std::less<>> described_;  // until a statement changes a table
};

}  // namespace database
