// Port names and the device nodes behind them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/services.h"

namespace common {

// The path of a port. DOS names, in any case and with an optional colon ("com3", "LPT1:"), are device nodes
// ("/dev/ttyS2", "/dev/usb/lp0") unless the environment names another path for them (TALLVEX_COM3,
// TALLVEX_LPT1). Any other name is a path already. Surrounding blanks are dropped.
std::string port_path(std::string_view port);

// The known DOS names in order ("com1" ... "lpt3").
const std::vector<std::string>& known_ports();

// Writes ports and files for real.
class FileDevices final : public Devices {
  public:
    // Relative paths start from this folder.
    explicit FileDevices(std::string working_folder) : folder_(std::move(working_folder)) {}
    bool write_port(std::string_view port, std::string_view bytes) override;
    bool write_file(std::string_view name, std::string_view bytes) override;

  private:
    std::string folder_;
};

}  // namespace common
