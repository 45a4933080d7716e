// Ports, and the files in the working folder that other devices read.
#pragma once

#include <string>
#include <string_view>

namespace common {

class Devices {
  public:
    virtual ~Devices() = default;
    // Writes bytes to a port (ports.h has the names) and waits for it for up to 3 s. Returns false if the
    // port is missing, refuses or does not take everything in time. Never throws.
    virtual bool write_port(std::string_view port, std::string_view bytes) = 0;
    // Replaces a file of the working folder, such as "xx.txt". Returns false if it cannot be written.
    virtual bool write_file(std::string_view name, std::string_view bytes) = 0;
};

}  // namespace common
