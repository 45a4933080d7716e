// The outside world of a play: a clock that stands where the play sets it, and ports that are files.
#pragma once

#include <filesystem>
#include <string>

#include "common/clock.h"
#include "common/devices.h"
#include "common/ports.h"

namespace play {

class PlayClock final : public common::Clock {
  public:
    common::Moment now() override { return moment_; }
    // The play alone sets the time.
    bool set(const common::Moment&) override { return true; }
    void put(const common::Moment& moment) { moment_ = moment; }

  private:
    common::Moment moment_{{2026, 11, 21}, {10, 42, 0, 0}};
};

// What is written to a port is appended to the file of its name in the folder "ports".
class PlayDevices final : public common::Devices {
  public:
    explicit PlayDevices(std::filesystem::path folder)
        : folder_(std::move(folder)), files_(folder_.string()) {}
    bool write_port(std::string_view port, std::string_view bytes) override;
    bool write_file(std::string_view name, std::string_view bytes) override {
        return files_.write_file(name, bytes);
    }

    // All that a port took; nothing for one that was never written to.
    std::string taken(std::string_view port) const;
    void empty(std::string_view port) const;
    // A port that is missing from now on, or back.
    void unplug(std::string_view port, bool missing) const;

  private:
    std::filesystem::path file_of(std::string_view port) const;
    std::filesystem::path folder_;
    common::FileDevices files_;
};

}  // namespace play
