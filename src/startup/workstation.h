// What start-up asks the machine.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace startup {

// The folder that a variable of the environment names, as an absolute path; nothing if it is not set.
std::optional<std::filesystem::path> named_folder(const char* variable);
inline std::optional<std::filesystem::path> named_home() {
    return named_folder("TALLVEX_HOME");
}

// The folder of the executable, or the one that TALLVEX_HOME names.
std::filesystem::path program_folder();

// The machine's name, at most 100 characters.
std::string computer_name();

// Returns true if a server text names this computer: "PC1", "PC1\\SQLEXPRESS", "PC1,1533", "tcp:PC1" or
// "pc1.shop.lan" on the computer PC1, and everywhere ".", "(local)", "localhost" and an
// address of the machine itself (127.…, ::1).
bool is_this_machine(std::string_view server, std::string_view computer_name);

// The cash-point number of a command line: its first character as a digit, or 0 if it is not one.
std::int64_t cash_point_of(std::string_view command_line);

// The network address of the machine in a server text ("machine\instance"), or "Not Found" if the network
// does not answer in time. IPv4 is preferred, because a data source "address\instance" needs it.
// "machine,port" gives "address,port", because the address replaces the machine in the data source.
std::string get_ip(std::string_view server, std::chrono::milliseconds within = std::chrono::seconds(5));

}  // namespace startup
