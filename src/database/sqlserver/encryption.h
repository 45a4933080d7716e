// How much of a connection to a server is encrypted.
#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include "database/sqlserver/address.h"

namespace database {

// The part "Encryption=" of the program's connection string.
namespace encryption {
inline constexpr std::string_view log_in = "login";        // the log-in, else it is not sent; the default
inline constexpr std::string_view everything = "require";  // log-in, statements and rows, else no connection
inline constexpr std::string_view off = "off";             // the log-in as well may go unencrypted
}  // namespace encryption

// Asks a server, before anybody signs in, whether it encrypts the log-in, or `all` that follows as well.
// Returns nothing if no answer comes within the time.
std::optional<bool> can_encrypt(const addrinfo* addresses, bool all, std::chrono::milliseconds within);

}  // namespace database
