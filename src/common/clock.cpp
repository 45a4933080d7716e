#include "common/clock.h"

#include <ctime>

namespace common {

std::chrono::milliseconds Clock::running() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

Moment SystemClock::now() {
    timespec stamp{};
    clock_gettime(CLOCK_REALTIME, &stamp);
    tm local{};
    localtime_r(&stamp.tv_sec, &local);
    return {{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday},
            {local.tm_hour, local.tm_min, local.tm_sec, static_cast<int>(stamp.tv_nsec / 1'000'000)}};
}

bool SystemClock::set(const Moment& moment) {
    tm local{};
    local.tm_year = moment.date.year - 1900;
    local.tm_mon = moment.date.month - 1;
    local.tm_mday = moment.date.day;
    local.tm_hour = moment.time.hour;
    local.tm_min = moment.time.minute;
    local.tm_sec = moment.time.second;
    local.tm_isdst = -1;
    const time_t seconds = mktime(&local);
    if (seconds == static_cast<time_t>(-1)) return false;
    const timespec stamp{seconds, static_cast<long>(moment.time.millisecond) * 1'000'000};
    return clock_settime(CLOCK_REALTIME, &stamp) == 0;
}

}  // namespace common
