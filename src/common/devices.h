// How logic reaches ports and files that stand for devices.
#pragma once

#include <string>
#include <string_view>

namespace common {

class Devices {
  public:
    virtual ~Devices() = default;
    // Writes bytes to a port (see ports.h for the names). Opens it without blocking and waits a bounded time
    // (3 s); false when it is missing, refuses or does not take everything in time. Never throws.
    virtual bool write_port(std::string_view port, std::string_view bytes) = 0;
    // Replaces the file "xx.txt" and its like in the working directory; false when it cannot be written.
    virtual bool write_file(std::string_view name, std::string_view bytes) = 0;
};

}  // namespace common
