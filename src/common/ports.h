// Port names and the device nodes behind them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/devices.h"

namespace common {

// The path behind a port name: names of the DOS kind, in any case and with an optional colon ("com3",
// "LPT1:"), go to their device nodes ("/dev/ttyS2", "/dev/usb/lp0"), or where this workstation's environment
// sends them (TALLVEX_COM3, TALLVEX_LPT1); any other name is a path already. Surrounding blanks are dropped.
std::string port_path(std::string_view port);

// The DOS-style names that the table knows, in order ("com1" ... "lpt3").
const std::vector<std::string>& known_ports();

class FileDevices final : public Devices {
  public:
    // Files are written below this folder.
    explicit FileDevices(std::string working_folder) : folder_(std::move(working_folder)) {}
    bool write_port(std::string_view port, std::string_view bytes) override;
    bool write_file(std::string_view name, std::string_view bytes) override;

  private:
    std::string folder_;
};

}  // namespace common
