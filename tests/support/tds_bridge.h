// A test server that speaks the server's protocol (TDS 7.4) to the real driver and runs statements on the
// embedded engine. It tests the way to a server end to end: the driver manager, FreeTDS, types, texts,
// counts, errors, lost and silent connections. Only a real server can show that a server accepts our
// Transact-SQL and gives the same results.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "database/value.h"

namespace test {

class TdsBridge {
  public:
    // The only login. The database is the file "NAME.db" in the folder, created empty if missing.
    struct Account {
        std::string user = "sa";
        std::string password = "secret";
        std::string database = "shop";
    };
    TdsBridge(std::filesystem::path folder, Account account);
    explicit TdsBridge(std::filesystem::path folder) : TdsBridge(std::move(folder), Account()) {}
    ~TdsBridge();
    TdsBridge(const TdsBridge&) = delete;
    TdsBridge& operator=(const TdsBridge&) = delete;

    std::uint16_t port() const { return port_; }
    const Account& account() const { return account_; }
    // For TALLVEX_TEST_SQLSERVER: "127.0.0.1;port;database;user;password".
    std::string place() const;
    std::filesystem::path file() const { return folder_ / (account_.database + ".db"); }

    // The state of the network: up; silent (nothing is answered, log-ins included); down (connections are cut
    // and new ones refused).
    enum class Network { up, silent, down };
    void set_network(Network network);
    // Cuts every connection; new ones are taken.
    void drop();
    // What happens to the next statement that contains the text: the connection is cut before it runs or
    // after it has run, or there is never an answer.
    enum class Failure { none, cut, run_and_cut, silence };
    void fail_next(std::string text, Failure failure);

    // From now on it knows as little as an open-source server: no ADD of several columns, no ALTER COLUMN
    // with NULL, no word directly after a number, and error numbers that are not SQL Server's.
    void know_less() { knows_less_ = true; }
    bool knows_less() const { return knows_less_; }

    // Delays every answer by this long, as on a slow network.
    void set_latency(std::chrono::milliseconds latency) { latency_ = latency; }

    // Statements and calls that arrived, in their order: the number of the connection and of the request that
    // they came in, both counted from 1; the text, and what stands for its "?".
    struct Received {
        int connection = 0;
        int request = 0;
        std::string text;
        std::vector<database::Value> values;
    };
    std::vector<Received> received();
    int logins() const { return logins_; }
    // Requests that a client sent and waited for: statements, batches, calls, and the two of a log-in.
    int requests() const { return requests_; }

    // For the session with one client.
    int count_request() { return ++requests_; }
    Failure receive(Received received);
    Network network() const { return network_; }
    std::chrono::milliseconds latency() const { return latency_; }
    void count_login() { ++logins_; }

  private:
    void serve();

    std::filesystem::path folder_;
    Account account_;
    std::uint16_t port_ = 0;
    std::atomic<Network> network_ = Network::up;
    std::atomic<std::chrono::milliseconds> latency_ = std::chrono::milliseconds(0);
    std::atomic<int> logins_ = 0;
    std::atomic<int> requests_ = 0;
    std::atomic<bool> ending_ = false;
    std::atomic<bool> knows_less_ = false;
    std::mutex lock_;
    std::vector<Received> received_;
    std::string failing_;
    Failure failure_ = Failure::none;
    std::condition_variable back_;
    std::condition_variable listens_;
    bool is_listening_ = true;  // again, after the network was down
    int listener_ = -1;
    int connections_ = 0;
    std::map<int, int> open_;  // sockets by their connection's number
    std::vector<std::thread> sessions_;
    std::thread thread_;
};

// The control socket of the bridge for other processes: one line of words in, one line back.
//
// Commands for the network: "silent", "away", "well", "drop"; for the next statement that contains a text:
// "cut TEXT", "run and cut TEXT", "silence TEXT"; "latency MILLISECONDS"; "count" begins to count requests.
// The answer is "ok", or "?" for an unknown command. Questions: "heard TEXT", "logins" and "requests" (since
// "count") give a number, "statements" what came in the requests since "count", and "opening" the first
// statement of the latest connection.
class TdsControl {
  public:
    TdsControl(TdsBridge& bridge, std::filesystem::path path);
    ~TdsControl();
    TdsControl(const TdsControl&) = delete;
    TdsControl& operator=(const TdsControl&) = delete;
    const std::filesystem::path& path() const { return path_; }

  private:
    void serve();
    std::string answer_to(std::string_view line);
    std::string answer_question(std::string_view line);
    std::string statements_since_count();

    TdsBridge& bridge_;
    int counted_from_ = 0;  // requests before "count"
    std::filesystem::path path_;
    int listener_;
    std::thread thread_;
};

}  // namespace test
