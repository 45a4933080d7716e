// Ends a wait for a server that has gone silent. The driver's own time-out asks the server to stop and then
// waits for its answer as long again; a socket that is shut ends either wait at once.
#pragma once

#include <sys/socket.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <set>
#include <thread>

namespace database {

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

class OdbcWatch {
  public:
    OdbcWatch() = default;
    ~OdbcWatch();
    OdbcWatch(const OdbcWatch&) = delete;
    OdbcWatch& operator=(const OdbcWatch&) = delete;

    // Sets the socket to shut down if a wait lasts too long.
    void look_after(std::optional<SocketsBefore::Found> socket);

    // A wait for at most so long; it ends with the object.
    class Wait {
      public:
        Wait(OdbcWatch& watch, std::chrono::milliseconds most) : watch_(watch) { watch_.begin(most); }
        ~Wait() { watch_.end(); }
        Wait(const Wait&) = delete;
        Wait& operator=(const Wait&) = delete;

      private:
        OdbcWatch& watch_;
    };
    // Returns true if the last wait was ended by this class.
    bool has_cut();

  private:
    using Clock = std::chrono::steady_clock;
    void begin(std::chrono::milliseconds most);
    void end();
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

}  // namespace database
