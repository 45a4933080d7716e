// A server on the loopback that speaks just enough of the protocol to accept log-ins and to answer with rows,
// errors or silence, or to hang up. It simulates failures that a test cannot provoke on a real server.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "support/tds_messages.h"

namespace test {

class TdsServer {
  public:
    // The answer to a request: nothing for silence; it may end with hang_up.
    using Answer = std::function<std::string(const std::string& request)>;
    static constexpr const char* hang_up = "hang up";
    static constexpr const char* silence = "silence";

    // Log-ins are answered with `login` ("" for success, else an error's bytes, hang_up or silence).
    explicit TdsServer(Answer answer, std::string login = "");
    ~TdsServer();
    TdsServer(const TdsServer&) = delete;
    TdsServer& operator=(const TdsServer&) = delete;

    std::uint16_t port() const { return port_; }
    int logins() const { return logins_; }
    // What the last log-in asked for.
    tds::Login last_login();
    // Statements and calls received, as text where they are text.
    std::vector<std::string> requests();

  private:
    void serve();
    void talk(int connection);

    Answer answer_;
    std::string login_;
    std::uint16_t port_ = 0;
    int listener_ = -1;
    std::atomic<int> logins_ = 0;
    std::mutex lock_;
    tds::Login last_login_;
    std::vector<std::string> requests_;
    std::vector<int> open_;
    std::vector<std::thread> talks_;
    std::thread thread_;
};

// A listener whose backlog accepts connections; it never answers.
class SilentServer {
  public:
    SilentServer();
    ~SilentServer();
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;
    std::uint16_t port() const { return port_; }

  private:
    std::uint16_t port_ = 0;
    int listener_ = -1;
};

}  // namespace test
