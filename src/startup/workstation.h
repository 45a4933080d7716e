// What start-up asks of the machine it runs on.
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

// The cash-point number of a command line: its first character as a digit; anything else, or nothing, is 0.
std::int64_t cash_point_of(std::string_view command_line);

// The network address of the server machine that a server text ("machine\instance") names, or "Not Found"
// when the network knows none within the time. IPv4 goes first, as a data source "address\instance" needs it.
// The port of "machine,port" stays with the address, as the address takes the machine's place in the data
// source.
std::string get_ip(std::string_view server, std::chrono::milliseconds within = std::chrono::seconds(5));

}  // namespace startup
