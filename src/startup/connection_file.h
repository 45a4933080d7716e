// The record of the connection file: three scrambled fields, and where they lead.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace startup {

inline constexpr std::size_t connection_record_length = 200;
// The address of a server whose address is not known.
inline constexpr std::string_view no_address = "Not Found";

// The fields in clear, UTF-8.
struct ConnectionRecord {
    std::string server;               // machine, or machine\instance; "embedded" for a shop in a file
    std::string database;             // the catalog, or the file of an embedded shop
    std::string address{no_address};  // last known network address of the server machine
    bool operator==(const ConnectionRecord&) const = default;
};

// A stored field (single-byte characters of code page 1256, padded with blanks): the first character's code
// is the key, three fillers, the text with each code raised by the key, three fillers. Any bytes decode to
// something; a field too short for a text decodes to an empty one.
std::string unscramble(std::string_view field);
// A text as a field of the given width, with a random key from 5 to 15 and random fillers. Throws
// StartUpError when the text is longer than the width less 7, or has characters that the code page has not.
std::string scramble(std::string_view text, std::size_t width, std::mt19937& random);

// Throws StartUpError when the bytes are fewer than a record.
ConnectionRecord decode_connection(std::string_view bytes);
// A whole record of 200 bytes.
std::string encode_connection(const ConnectionRecord& record, std::mt19937& random);
// The first record of the bytes with another address; all else stays as it is.
std::string with_address(std::string bytes, std::string_view address, std::mt19937& random);

// Where a connection record leads.
struct DataSource {
    std::string server;       // the server text, less one trailing "C"
    std::string machine;      // what stands before the first backslash
    std::string instance;     // the backslash and everything after it; empty without one
    std::string data_source;  // what the connection string names, less one trailing "C" again
};
DataSource data_source_of(const ConnectionRecord& record);

}  // namespace startup
