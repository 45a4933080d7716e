// The activity log.
#pragma once

#include <string_view>

namespace common {

class Log {
  public:
    virtual ~Log() = default;
    // Appends one line: message, code, moment. Never throws; a line that cannot be written is lost.
    virtual void log_event(std::string_view message, std::string_view code) = 0;
};

}  // namespace common
