// The workstation's clock. Nothing else reads the time of day.
#pragma once

#include <chrono>

#include "common/date_time.h"

namespace common {

class Clock {
  public:
    virtual ~Clock() = default;
    // The workstation's local time.
    virtual Moment now() = 0;
    // Sets the workstation's clock. Returns false if the system forbids it.
    virtual bool set(const Moment& moment) = 0;
    // The time since some moment before the program began. It goes on whatever the clock is set to.
    virtual std::chrono::milliseconds running();
};

class SystemClock final : public Clock {
  public:
    Moment now() override;
    bool set(const Moment& moment) override;
};

}  // namespace common
