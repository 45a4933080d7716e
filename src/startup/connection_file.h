// The record of the connection file: three scrambled fields, the data source that they name, and the
// connection to the shop's database there.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>

#include "database/connection.h"

namespace startup {

inline constexpr std::size_t connection_record_length = 200;
// The address of a server whose address is not known.
inline constexpr std::string_view no_address = "Not Found";
// The server, and so the data source, of a shop in a file.
inline constexpr std::string_view embedded_source = "embedded";

// The fields in clear, UTF-8.
struct ConnectionRecord {
    std::string server;               // machine, or machine\instance; "embedded" for a shop in a file
    std::string database;             // the catalog, or the file of an embedded shop
    std::string address{no_address};  // last known network address of the server machine
    std::string encryption{};         // database/sqlserver/encryption.h; empty for the default
    bool operator==(const ConnectionRecord&) const = default;
};

// Reads a stored field (code page 1256, padded with blanks): the first character's code is the key, then
// three fillers, the text with each code raised by the key, three fillers. Any bytes give some text; a field
// too short for a text gives an empty one.
std::string unscramble(std::string_view field);
// Writes a text as a field of the given width, with a random key from 5 to 15 and random fillers. Throws
// StartUpError if the text is longer than the width less 7 or has characters outside the code page.
std::string scramble(std::string_view text, std::size_t width, std::mt19937& random);

// Throws StartUpError if there are fewer bytes than a record has, if the record names no server or no
// database, or if a name holds what no name can.
ConnectionRecord decode_connection(std::string_view bytes);
// A whole record of 200 bytes, and after it the line "Encryption=…" if it is not the default.
std::string encode_connection(const ConnectionRecord& record, std::mt19937& random);
// Replaces the address in the first record and keeps all other bytes.
std::string with_address(std::string bytes, std::string_view address, std::mt19937& random);

// What a connection record names.
struct DataSource {
    std::string server;       // the server text without one trailing "C"
    std::string data_source;  // the address with the server's "\instance", or the server if no address is
                              // known, without one trailing "C" again

    // Returns true for a shop in a file. This is the only test for it: an address or a dropped "C" can turn
    // the server text "embedded" into a server, and the other way round.
    bool is_embedded() const;
};
DataSource data_source_of(const ConnectionRecord& record);

// "Provider=SQLOLEDB.1;Password=…;Persist Security Info=True;User ID=sa;Initial Catalog= …;Data Source=…",
// and ";Encryption=…" if that is not the default.
std::string connection_string(const ConnectionRecord& record, std::string_view password);

// Opens what a connection string names. The data source "embedded" is the embedded engine, and the catalog is
// then its existing file, relative to `folder`; any other data source is a server, reached through unixODBC
// and FreeTDS (login 5 s, query 30 s). A server that does not answer throws Error with the description
// "SQL Server does not exist or access denied.".
std::unique_ptr<database::Connection> open_connection(const std::string& connection_string,
                                                      const std::filesystem::path& folder);
using OpenConnection = std::function<std::unique_ptr<database::Connection>(
    const std::string& connection_string, const std::filesystem::path& folder)>;

// Opens the database of a connection record. A server needs the password of its login (read_sa_password);
// throws StartUpError without it.
std::unique_ptr<database::Connection> open_shop(const ConnectionRecord& record,
                                                const std::filesystem::path& program_folder,
                                                const std::filesystem::path& working_folder,
                                                const OpenConnection& open = open_connection);

// The file of an embedded shop.
std::filesystem::path shop_file(const ConnectionRecord& record, const std::filesystem::path& working_folder);

}  // namespace startup
