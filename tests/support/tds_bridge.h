// A test device: a server program that speaks the server's protocol (TDS 7.4) to the real driver and runs
// what it is sent on the embedded engine. It proves the program's road to a server end to end: the driver
// manager, FreeTDS, types, texts, counts, errors, lost and silent connections. It does not prove that a
// server accepts our Transact-SQL, nor that it works on it as the embedded engine does: only a real server
// can.
#pragma once

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace test {

class TdsBridge {
  public:
    // Who may log in to what; the database is the file "NAME.db" in the folder, made empty when missing.
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

    // How the network stands: well; silent (nothing is answered, log-ins included); away (connections are cut
    // and new ones refused).
    enum class Mood { well, silent, away };
    void set_mood(Mood mood);
    // Cuts every connection; new ones are taken.
    void drop();
    // What befalls the next statement that contains the text, once: the connection is cut before it runs or
    // after it has run, or there is never an answer.
    enum class Fate { run, cut, run_and_cut, silence };
    void doom(std::string text, Fate fate);

    // Statements and calls that arrived, in their order: the number of the connection, counted from 1, and
    // the text.
    struct Heard {
        int connection = 0;
        std::string text;
    };
    std::vector<Heard> heard();
    int logins() const { return logins_; }

    // For the talk with one client.
    Fate hear(int connection, std::string_view text);
    Mood mood() const { return mood_; }
    void count_login() { ++logins_; }

  private:
    void listen();
    void serve();
    void cut_all();

    std::filesystem::path folder_;
    Account account_;
    std::uint16_t port_ = 0;
    std::atomic<Mood> mood_ = Mood::well;
    std::atomic<int> logins_ = 0;
    std::atomic<bool> ending_ = false;
    std::mutex lock_;
    std::vector<Heard> heard_;
    std::string doomed_;
    Fate fate_ = Fate::run;
    std::condition_variable back_;
    int listener_ = -1;
    int connections_ = 0;
    std::map<int, int> open_;  // sockets by their connection's number
    std::vector<std::thread> talks_;
    std::thread thread_;
};

}  // namespace test
