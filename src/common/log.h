// The activity log as logic sees it.
#pragma once

#include <string_view>

namespace common {

class Log {
  public:
    virtual ~Log() = default;
    // Appends one line: message, code, moment. A log that cannot be written never stops an action.
    virtual void log_event(std::string_view message, std::string_view code) = 0;
};

}  // namespace common
