#include "database/sqlserver/open.h"

#include <sys/socket.h>

#include <array>
#include <filesystem>
#include <system_error>

#include "common/text.h"
#include "database/sqlserver/address.h"
#include "database/sqlserver/encryption.h"
#include "database/sqlserver/odbc_connection.h"

namespace database {

namespace {

constexpr std::uint16_t default_port = 1433;

// The password as typed. The program puts it between these two texts unquoted, so it may hold ";" and "=".
std::string password_of(std::string_view text) {
    constexpr std::string_view before = "Password=";
    constexpr std::string_view after = ";Persist Security Info=";
    const auto begin = text.find(before);
    const auto end = text.rfind(after);
    if (begin == text.npos || end == text.npos || end < begin + before.size())
        return std::string(connection_part(text, "Password"));
    return std::string(text.substr(begin + before.size(), end - begin - before.size()));
}

std::string_view encryption_of(std::string_view connection_string) {
    const std::string_view asked = common::trim(connection_part(connection_string, "Encryption"));
    for (const std::string_view known : {encryption::everything, encryption::off})
        if (common::equal_ignoring_case(asked, known)) return known;
    return encryption::log_in;
}

// A server that cannot encrypt would be sent the password in clear: the driver encrypts only if the server
// can.
void require_encryption(const addrinfo* addresses, bool all, std::chrono::milliseconds within) {
    const auto can = can_encrypt(addresses, all, within);
    if (!can) throw Error("08001", server_unreachable, "");
    if (!*can)
        throw Error("08004",
                    all ? "The server does not encrypt all that is sent, so the password was not sent."
                        : "The server does not encrypt the log-in, so the password was not sent.",
                    "", Error::Kind::not_encrypted);
}

// A value of the driver's connection string; in braces, so that it may hold ";". The driver takes the first
// "};" as its end and has no way to write one.
std::string braced(std::string_view value) {
    if (value.find("};") != value.npos)
        throw Error("28000", "The password or the database name holds \"};\", which the driver cannot send.",
                    "");
    return "{" + std::string(value) + "}";
}

// The driver by its registered name, else its library where the package puts it.
std::string freetds_driver() {
    const OdbcHandle environment(SQL_HANDLE_ENV, SQL_NULL_HANDLE);
    SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION,
                  reinterpret_cast<SQLPOINTER>(static_cast<std::uintptr_t>(SQL_OV_ODBC3)), 0);
    std::array<SQLCHAR, 256> name{};
    std::array<SQLCHAR, 1024> attributes{};
    SQLSMALLINT name_length = 0;
    SQLSMALLINT attributes_length = 0;
    for (SQLUSMALLINT direction = SQL_FETCH_FIRST; SQL_SUCCEEDED(SQLDrivers(
             environment.get(), direction, name.data(), static_cast<SQLSMALLINT>(name.size()), &name_length,
             attributes.data(), static_cast<SQLSMALLINT>(attributes.size()), &attributes_length));
         direction = SQL_FETCH_NEXT) {
        const std::string registered(name.begin(), name.begin() + name_length);
        if (common::equal_ignoring_case(registered, "FreeTDS")) return braced(registered);
    }
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/usr/lib", ignored)) {
        const auto library = entry.path() / "odbc" / "libtdsodbc.so";
        if (std::filesystem::exists(library, ignored)) return braced(library.string());
    }
    return braced("FreeTDS");  // the driver manager will report that it is missing
}

}  // namespace

std::string_view connection_part(std::string_view text, std::string_view name) {
    std::string_view found;
    while (!text.empty()) {
        const auto end = text.find(';');
        const std::string_view part = text.substr(0, end);
        const auto equals = part.find('=');
        if (equals != part.npos && common::equal_ignoring_case(common::trim(part.substr(0, equals)), name))
            found = part.substr(equals + 1);
        text = end == text.npos ? std::string_view() : text.substr(end + 1);
    }
    return found;
}

std::string freetds_connection_string(const std::string& connection_string, const std::string& driver,
                                      const std::string& host, std::uint16_t port) {
    return "DRIVER=" + driver + ";SERVER=" + host + ";PORT=" + std::to_string(port) +
           ";DATABASE=" + braced(common::trim(connection_part(connection_string, "Initial Catalog"))) +
           ";UID=" + braced(common::trim(connection_part(connection_string, "User ID"))) +
           ";PWD=" + braced(password_of(connection_string)) +
           ";TDS_Version=7.4;ClientCharset=UTF-8;APP=Tallvex;Encryption=" +
           (encryption_of(connection_string) == encryption::everything ? "require" : "request") + ";";
}

namespace {

struct FoundServer {
    std::string host;
    std::uint16_t port = 0;
    Addresses addresses;
    std::chrono::milliseconds left{};  // of the time
};

// Throws Error 08001 if the server's address is not found within the time.
FoundServer find_server(const std::string& connection_string, std::chrono::milliseconds within) {
    const auto end = std::chrono::steady_clock::now() + within;
    const auto left = [end] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    };
    const DataSource source = parse_data_source(connection_part(connection_string, "Data Source"));
    FoundServer server{source.host, source.port.value_or(default_port), nullptr};
    // The driver resolves the name again, without a time-out, so only names that resolve are given to it.
    server.addresses = addresses_of(server.host, server.port, SOCK_STREAM, within);
    bool found = server.addresses != nullptr;
    if (found && !source.instance.empty()) {
        const auto told = ask_instance_port(server.host, source.instance, left());
        found = told.has_value();
        server.port = told.value_or(server.port);
        if (found) server.addresses = addresses_of(server.host, server.port, SOCK_STREAM, left());
    }
    if (!found || server.addresses == nullptr) throw Error("08001", server_unreachable, "");
    server.left = left();
    return server;
}

std::unique_ptr<Connection> open_database(const std::string& connection_string, Patience patience) {
    const auto find = [connection_string, driver = freetds_driver()](std::chrono::milliseconds within) {
        const FoundServer server = find_server(connection_string, within);
        const std::string_view asked = encryption_of(connection_string);
        if (asked != encryption::off)
            require_encryption(server.addresses.get(), asked == encryption::everything, server.left);
        return freetds_connection_string(connection_string, driver, server.host, server.port);
    };
    return std::make_unique<OdbcConnection>(
        OdbcSettings{"", "set dateformat ymd", patience.login_seconds, patience.query_seconds, find});
}

// Servers other than SQL Server use error numbers of their own. If the same log-in opens the server's own
// database, then the shop's database is missing or closed to it.
bool opens_master(const std::string& connection_string, Patience patience) {
    try {
        open_database(connection_string + ";Initial Catalog=master", patience);
        return true;
    } catch (const Error&) {
        return false;
    }
}

}  // namespace

std::optional<std::chrono::microseconds> ping_server(const std::string& connection_string,
                                                     std::chrono::milliseconds within) {
    try {
        const FoundServer server = find_server(connection_string, within);
        const auto begin = std::chrono::steady_clock::now();
        if (!can_encrypt(server.addresses.get(), false, server.left)) return std::nullopt;
        return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                     begin);
    } catch (const Error&) {
        return std::nullopt;
    }
}

std::unique_ptr<Connection> open_sqlserver(const std::string& connection_string, Patience patience) {
    try {
        return open_database(connection_string, patience);
    } catch (const Error& error) {
        if (error.kind() != Error::Kind::other || !opens_master(connection_string, patience)) throw;
        throw Error(error.sqlstate(), error.what(), "", Error::Kind::database_missing);
    }
}

}  // namespace database
