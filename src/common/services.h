// The interfaces through which logic uses the world outside the database.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/clock.h"
#include "common/prompts.h"

namespace common {

// Why a port took none or only part of the bytes.
enum class PortFault {
    none,
    missing,         // there is no such device or folder
    denied,          // this user may not write there
    not_a_port,      // a file of the shop or of somebody else, a folder, a disk
    shared_printer,  // "\\\\host\\printer": reached through the system's printers alone
    unknown_name,    // a name or path of the DOS kind that stands for no device
    disk_full,
    silent,  // nobody reads, or not in time
};

// Whether the port can never be written to, no matter what is switched on or plugged in.
constexpr bool is_never_a_port(PortFault fault) {
    return fault == PortFault::not_a_port || fault == PortFault::shared_printer ||
           fault == PortFault::unknown_name;
}

// Something printed, as the cashier calls it: "البون رقم 12".
struct PortDocument {
    std::string title;
    std::string port;
    PortFault fault = PortFault::none;
};

// Documents that are being sent to the ports, and documents that failed, the oldest first.
struct PortReport {
    std::vector<PortDocument> under_way;
    std::vector<PortDocument> failed;
};

// Ports, and the files in the working folder that other devices read.
class Devices {
  public:
    virtual ~Devices() = default;
    // Writes bytes to a port (names: ports.h) after what was written to it before, and does not wait for a
    // slow one. Returns a fault that is known at once. A later one is in the report if the bytes are a
    // document with a title; otherwise they are dropped. Never throws.
    virtual PortFault write_port(std::string_view port, std::string_view bytes,
                                 std::string_view document = {}) = 0;
    // Replaces a file of the working folder, such as "xx.txt". Returns false if it cannot be written.
    virtual bool write_file(std::string_view name, std::string_view bytes) = 0;

    virtual PortReport port_report() const { return {}; }
    // Writes the documents that failed once more.
    virtual void send_again() {}
    // Drops the documents that failed.
    virtual void forget_failed() {}
    // Drops them and the documents that are still being sent.
    virtual void forget_unsent() {}
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
