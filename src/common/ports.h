// Port names and the device nodes behind them.
#pragma once

#include <filesystem>
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

// What is sent to a port begins with one of these: the printer's reset, the bell that opens a drawer.
inline constexpr std::string_view printer_reset = "\x1B@";
inline constexpr std::string_view drawer_bell = "\x07";

// Says what may be written as a port, for all who write, choose or check one: a character device, a named
// pipe, or a receipt file, to which receipts are appended. A file counts as a receipt file if it begins as
// receipts do, and if this program does not have it open: its own database must not be opened even to look,
// because closing it would drop the locks of SQLite. A new file in `folder`, the shop's, needs a name that
// ends in ".txt", ".prn" or ".bin". Relative paths start from `folder`. Writes nothing.
PortFault port_fault(std::string_view port, const std::filesystem::path& folder);

// Whether two ports lead to the same device or file.
bool is_same_port(std::string_view one, std::string_view other, const std::filesystem::path& folder);

// Writes ports and files for real.
class FileDevices final : public Devices {
  public:
    // Relative paths start from this folder.
    explicit FileDevices(std::filesystem::path working_folder) : folder_(std::move(working_folder)) {}
    PortFault write_port(std::string_view port, std::string_view bytes) override;
    bool write_file(std::string_view name, std::string_view bytes) override;

  private:
    std::filesystem::path folder_;
};

}  // namespace common
