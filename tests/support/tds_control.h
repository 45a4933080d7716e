// The bridge's switchboard for other processes: one line of words into a local socket, one line back.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <thread>

#include "support/tds_bridge.h"

namespace test {

// Takes, of the network: "silent", "away", "well", "drop"; of the next statement that contains a text:
// "cut TEXT", "run and cut TEXT", "silence TEXT". These are answered "ok", or "?" when it is none of them.
// And questions: "heard TEXT" and "logins" give a count, "opening" the first statement of the latest
// connection.
class TdsControl {
  public:
    TdsControl(TdsBridge& bridge, std::filesystem::path path);
    ~TdsControl();
    TdsControl(const TdsControl&) = delete;
    TdsControl& operator=(const TdsControl&) = delete;
    const std::filesystem::path& path() const { return path_; }

  private:
    void serve();
    std::string obey(std::string_view line);

    TdsBridge& bridge_;
    std::filesystem::path path_;
    int listener_;
    std::thread thread_;
};

}  // namespace test
