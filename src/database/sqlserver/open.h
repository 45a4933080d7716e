// A shop on a server, reached through unixODBC and the FreeTDS driver.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "database/connection.h"

namespace database {

// Opens the server that the program's connection string names ("Provider=SQLOLEDB.1;…"); its data source is a
// host, "host,port" or "host\instance". Log-in waits 5 s including name look-up, a statement 30 s. Throws
// Error with its kind if the server does not answer or refuses the login or the database. If the connection
// is lost later, the statement throws Error 08S01 and the next one connects again. Unless the string says
// "Encryption=off" (encryption.h), nobody signs in at a server that cannot encrypt the log-in.
struct Patience {
    int login_seconds = 5;
    int query_seconds = 30;
};
std::unique_ptr<Connection> open_sqlserver(const std::string& connection_string, Patience patience);
inline std::unique_ptr<Connection> open_sqlserver(const std::string& connection_string) {
    return open_sqlserver(connection_string, Patience());
}

// Asks the server for its first answer, before any log-in. Returns the time to that answer; nothing if none
// comes within the time.
std::optional<std::chrono::microseconds> ping_server(
    const std::string& connection_string, std::chrono::milliseconds within = std::chrono::milliseconds(1500));

// The value of a "name=value;" part of a connection string, with its blanks; empty if there is none. The last
// one counts, as with OLE DB.
std::string_view connection_part(std::string_view connection_string, std::string_view name);

// The driver's own connection string for the program's: `driver` is its name or library in braces.
std::string freetds_connection_string(const std::string& connection_string, const std::string& driver,
                                      const std::string& host, std::uint16_t port);

}  // namespace database
