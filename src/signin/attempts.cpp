#include "signin/attempts.h"

#include <algorithm>

namespace signin {

namespace {

using namespace std::chrono_literals;
constexpr int free_attempts = 2;
constexpr Attempts::Time first_pause = 2s;
constexpr Attempts::Time longest_pause = 5min;

}  // namespace

Attempts::Time Attempts::pause(std::int64_t user, Time now) const {
    const auto found = users_.find(user);
    return found == users_.end() ? Time() : std::max(Time(), found->second.until - now);
}

void Attempts::wrong(std::int64_t user, Time now) {
    User& of = users_[user];
    if (++of.wrong <= free_attempts) return;
    Time pause = first_pause;
    for (int more = of.wrong - free_attempts; more > 1 && pause < longest_pause; --more)
        pause *= 2;
    of.until = now + std::min(pause, longest_pause);
}

}  // namespace signin
