// The control socket of the bridge for other processes: one line of words in, one line back.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <thread>

#include "support/tds_bridge.h"

namespace test {

// Commands for the network: "silent", "away", "well", "drop"; for the next statement that contains a text:
// "cut TEXT", "run and cut TEXT", "silence TEXT". The answer is "ok", or "?" for an unknown command.
// Questions: "heard TEXT" and "logins" give a count, "opening" the first statement of the latest connection.
class TdsControl {
  public:
    TdsControl(TdsBridge& bridge, std::filesystem::path path);
    ~TdsControl();
    TdsControl(const TdsControl&) = delete;
    TdsControl& operator=(const TdsControl&) = delete;
    const std::filesystem::path& path() const { return path_; }

  private:
    void serve();
    std::string answer_to(std::string_view line);

    TdsBridge& bridge_;
    std::filesystem::path path_;
    int listener_;
    std::thread thread_;
};

}  // namespace test
