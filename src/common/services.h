// What logic may use of the world outside the database.
#pragma once

#include <string_view>

#include "common/clock.h"
#include "common/prompts.h"

namespace common {

// Why a port took nothing, or not everything.
enum class PortFault {
    none,
    missing,     // there is no such device or folder
    denied,      // this user may not write there
    not_a_port,  // a file of the shop or of somebody else, a folder, a disk
    disk_full,
    silent,  // nobody reads, or not in time
};

// Ports, and the files in the working folder that other devices read.
class Devices {
  public:
    virtual ~Devices() = default;
    // Writes bytes to a port (ports.h has the names) and waits for it for up to 3 s. Never throws.
    virtual PortFault write_port(std::string_view port, std::string_view bytes) = 0;
    // Replaces a file of the working folder, such as "xx.txt". Returns false if it cannot be written.
    virtual bool write_file(std::string_view name, std::string_view bytes) = 0;
};

// The activity log.
class Log {
  public:
    virtual ~Log() = default;
    // Appends one line: message, code, moment. Never throws; a line that cannot be written is lost.
    virtual void log_event(std::string_view message, std::string_view code) = 0;
};

// The log's code of lines about saving.
inline constexpr std::string_view saving_code = "250";

struct Services {
    Prompts& prompts;
    Clock& clock;
    Devices& devices;
    Log& log;
};

}  // namespace common
