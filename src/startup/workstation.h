// What start-up asks the machine for.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace startup {

// The folder of the executable, or the one that TALLVEX_HOME names.
std::filesystem::path program_folder();

// The machine's name, at most 100 characters.
std::string computer_name();

// The cash-point number of a command line: its first character as a digit, or 0 if it is not one.
std::int64_t cash_point_of(std::string_view command_line);

// The network address of the machine in a server text ("machine\instance"), or "Not Found" if the network
// does not answer in time. IPv4 is preferred, because a data source "address\instance" needs it.
// "machine,port" gives "address,port", because the address replaces the machine in the data source.
std::string get_ip(std::string_view server, std::chrono::milliseconds within = std::chrono::seconds(5));

}  // namespace startup
