// The activity log: "Logs/hm_log.qzv" in the program folder, one line per event.
#pragma once

#include <filesystem>

#include "common/clock.h"
#include "common/services.h"

namespace startup {

// A line is the message, "  ----  ", a code, "  ----  " and the moment as "yyyy/MM/dd HH:mm", in UTF-8. Line
// ends in a message become blanks. Every call opens the file, appends in one piece and closes it. A line that
// cannot be written is lost; nothing else happens.
class ActivityLog final : public common::Log {
  public:
    ActivityLog(std::filesystem::path program_folder, common::Clock& clock)
        : folder_(std::move(program_folder)), clock_(clock) {}
    void log_event(std::string_view message, std::string_view code) override;

  private:
    std::filesystem::path folder_;
    common::Clock& clock_;
};

}  // namespace startup
