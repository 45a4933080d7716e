// Port names and the device nodes behind them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "common/files.h"
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

// Decides what may be written to as a port, for everything that writes to, chooses or checks one: a character
// device, a named pipe, or a receipt file, to which receipts are appended. A file is a receipt file if it
// begins as receipts do and this program does not have it open. Its own database must not be opened even to
// look: closing it would drop the locks of SQLite. A new file in `folder`, the shop's, needs a name that ends
// in ".txt", ".prn" or ".bin". Names of the DOS kind that stand for no device ("com10", "prn", a path with
// "\\") are never files. Relative paths start from `folder`. Writes nothing.
PortFault port_fault(std::string_view port, const std::filesystem::path& folder);

// The file or device behind a port, by whatever name it is called; and whether two ports lead to the same
// one.
std::filesystem::path port_place(std::string_view port, const std::filesystem::path& folder);
bool is_same_port(std::string_view one, std::string_view other, const std::filesystem::path& folder);

// A port opened for writing without waiting, by the rules of port_fault(); a new receipt file is made.
struct OpenedPort {
    PortFault fault;
    Descriptor file;  // not open if there is a fault
};
OpenedPort open_port(std::string_view port, const std::filesystem::path& folder);

// The fault of a port for an error number of the system.
PortFault fault_of(int error);

// Whether this program has a regular file open, its own database for example.
bool is_open_here(const std::filesystem::path& file);

}  // namespace common
