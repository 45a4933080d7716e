// A connection through the ODBC driver manager that survives the loss of its server.
#pragma once

#include <sys/socket.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <thread>

#include "database/sqlserver/odbc_catalogue.h"
#include "database/sqlserver/odbc_statement.h"
#include "database/threaded_connection.h"

namespace database {

// The text of the error if no server is found.
inline constexpr const char* server_unreachable = "SQL Server does not exist or access denied.";

// Remembers the sockets that the process had when the object was made; a newer one belongs to the driver that
// connected meanwhile.
class SocketsBefore {
  public:
    SocketsBefore();
    // The new socket to a server's port. Returns nothing if there is none or more than one.
    struct Found {
        int descriptor = -1;
        sockaddr_storage own{};  // its own address: a later socket of the same number has another
    };
    std::optional<Found> new_one(std::uint16_t port) const;

  private:
    std::set<int> known_;
};

// Ends a wait for a server that has gone silent. The driver's own time-out asks the server to stop and then
// waits as long again for its answer. Shutting the socket ends both waits at once.
class OdbcWatch {
  public:
    OdbcWatch() = default;
    ~OdbcWatch();
    OdbcWatch(const OdbcWatch&) = delete;
    OdbcWatch& operator=(const OdbcWatch&) = delete;

    // Sets the socket to shut down if a wait lasts too long.
    void look_after(std::optional<SocketsBefore::Found> socket);

    // A wait with a limit. It ends with the object.
    class Wait {
      public:
        Wait(OdbcWatch& watch, std::chrono::milliseconds most) : watch_(watch) { watch_.begin(most); }
        ~Wait() { watch_.end(); }
        Wait(const Wait&) = delete;
        Wait& operator=(const Wait&) = delete;

      private:
        OdbcWatch& watch_;
    };
    // Ends the wait now.
    void cut();
    // Returns true if the last wait was ended by this class.
    bool has_cut();

  private:
    using Clock = std::chrono::steady_clock;
    void begin(std::chrono::milliseconds most);
    void end();
    void shut();
    void keep_watch();

    std::mutex lock_;
    std::condition_variable changed_;
    std::optional<SocketsBefore::Found> socket_;
    Clock::time_point deadline_ = Clock::time_point::max();
    Clock::time_point asleep_until_ = Clock::time_point::min();
    bool cut_ = false;
    bool ending_ = false;
    std::thread thread_;
};

struct OdbcSettings {
    std::string driver_string;      // the driver's own connection string
    std::string opening_statement;  // run on every new connection; may be empty
    int login_seconds = 5;          // to the end of the opening statement
    int query_seconds = 30;
    // Called before every connect to renew driver_string within that time, because the server may have moved.
    // Throws Error 08001 if the server is not found.
    std::function<std::string(std::chrono::milliseconds within)> find = {};
};

// Connects when constructed. If a statement finds the connection lost or waits longer than query_seconds, it
// throws 08S01 or HYT00 and closes the connection; the next statement connects again.
class OdbcConnection final : public Connection, public Stoppable {
  public:
    explicit OdbcConnection(OdbcSettings settings);
    ~OdbcConnection() override;

    // A statement is durable as soon as the server has answered.
    void make_durable() override {}
    bool is_embedded() const override { return false; }
    void set_stop(std::stop_token stop) override { stop_ = std::move(stop); }
    Table describe(std::string_view table) override { return *description(table); }
    std::shared_ptr<const Table> description(std::string_view table) override;
    void describe_all(const std::vector<std::string>& tables) override;
    Outcome run(std::string_view statement, const std::vector<Value>& values) override;
    std::vector<Outcome> run_all(const std::vector<Command>& commands) override;

  private:
    void connect();
    void disconnect();
    // Runs `work` within a limit of time and turns its failure into an Error about the statement.
    template <typename Work>
    auto guarded(std::string_view statement, std::chrono::milliseconds most, Work work);

    OdbcSettings settings_;
    OdbcHandle environment_;
    OdbcWatch watch_;
    std::stop_token stop_;
    OdbcHandle connection_;   // none while the server is lost
    TablesByName described_;  // until a statement changes a table
};

}  // namespace database
