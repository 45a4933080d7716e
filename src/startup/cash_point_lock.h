// One till of this machine for each cash point of a shop.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace startup {

// The till that holds the lock listens at a socket whose name only one program can have. The name ends with
// the program, however that ends, so that a crash or a power cut locks nobody out.
class CashPointLock {
  public:
    // `shop` tells the shops of this machine apart.
    CashPointLock(std::string_view shop, std::int64_t cash_point);
    ~CashPointLock() { release(); }
    CashPointLock(const CashPointLock&) = delete;
    CashPointLock& operator=(const CashPointLock&) = delete;

    // The till that has the lock.
    struct Holder {
        bool shown = false;  // its window has come to the front
        std::string user;    // whose it is, if another user's; empty if it does not answer
    };
    // Takes the lock and returns nothing, or asks its holder to show itself and returns it. Waits for a
    // holder that is just ending. If the system has no such sockets, there is no lock.
    std::optional<Holder> take(std::chrono::milliseconds patience = std::chrono::seconds(6));
    void release();

    // Readable when another start asks for this till; -1 without the lock.
    int descriptor() const { return listener_; }
    // Answers those that ask. `show` brings the window to the front; it is called for this user's starts.
    void answer(const std::function<void()>& show);

  private:
    std::optional<Holder> ask(std::chrono::steady_clock::time_point deadline) const;

    std::string name_;
    int listener_ = -1;
};

}  // namespace startup
