// Bytes on their way to one port.
#pragma once

#include <chrono>
#include <string>

#include "common/files.h"
#include "common/services.h"

namespace common {

// A port that still takes bytes is slow; one that takes none for this long has failed.
inline constexpr auto port_patience = std::chrono::seconds(3);

class PortTransfer {
  public:
    PortTransfer(Descriptor port, std::string bytes);

    enum class State { under_way, done, failed };
    // Writes what the port takes now and never waits. It is done only when the device itself has taken every
    // byte.
    State advance();
    // Why it failed.
    PortFault fault() const { return fault_; }
    // Drops the bytes that the device has not taken yet, so that they are not printed later.
    void abandon();
    // Whether closing the port may take seconds, as it does for a serial line whose device has stopped.
    bool is_slow_to_close() const;

  private:
    State fail(PortFault fault);
    std::size_t waiting() const;

    Descriptor port_;
    std::string bytes_;
    std::size_t written_ = 0;
    std::size_t left_ = 0;  // when it last moved
    std::chrono::steady_clock::time_point moved_;
    PortFault fault_ = PortFault::none;
};

}  // namespace common
