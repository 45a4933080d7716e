// Wrong passwords of each user, and the pause before the next one is compared. A restart of the program
// forgets them.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>

namespace signin {

class Attempts {
  public:
    using Time = std::chrono::milliseconds;  // of common::Clock::running()

    // How long until the user's next password is compared; 0 if it is compared at once.
    Time pause(std::int64_t user, Time now) const;
    // The first wrong passwords in a row cost nothing. The pause after each further one is twice as long, up
    // to five minutes.
    void wrong(std::int64_t user, Time now);
    void right(std::int64_t user) { users_.erase(user); }

  private:
    struct User {
        int wrong = 0;  // in a row
        Time until{};
    };
    std::map<std::int64_t, User> users_;
};

}  // namespace signin
