// Resolves the data source of the program's connection string.
#pragma once

#include <netdb.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace database {

// "shop-pc", "192.168.1.5,1434", "tcp:shop-pc", "SHOPPC\SQLEXPRESS"; "." and "(local)" are this computer.
// If a port is given, the instance is ignored; the instance MSSQLSERVER is the default one.
struct DataSource {
    std::string host;
    std::string instance;               // empty for the default one
    std::optional<std::uint16_t> port;  // as given
};
DataSource parse_data_source(std::string_view text);

// The addresses of a host for a kind of socket. Returns null if it is unknown or the name service does not
// answer within the time, however long its own time-out is.
using Addresses = std::shared_ptr<addrinfo>;
using LookUp = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
Addresses addresses_of(const std::string& host, std::uint16_t port, int socket_kind,
                       std::chrono::milliseconds within, LookUp look_up = getaddrinfo);

// Asks the server's browser service for the TCP port of a named instance. Returns nothing if no answer with a
// port comes within the time.
std::optional<std::uint16_t> ask_instance_port(const std::string& host, const std::string& instance,
                                               std::chrono::milliseconds within,
                                               std::uint16_t browser_port = 1434);

}  // namespace database
