// Text and diagnostics of ODBC: UTF-8 inside, 16-bit characters at the driver.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>
#include <vector>

namespace database {

// UTF-16 with a closing zero, as the wide functions take it. Malformed bytes become U+FFFD.
std::vector<SQLWCHAR> to_wide(std::string_view utf8);
std::string from_wide(const SQLWCHAR* text, std::size_t length);

// A statement with N before every literal that holds more than ASCII: a server whose collation is not Arabic
// would read the characters of a plain '…' as question marks.
std::string with_wide_literals(std::string_view statement);

// One record of what a driver says about a handle.
struct Diagnostic {
    std::string sqlstate;
    int native = 0;    // the server's number; FreeTDS's own errors are 20000 and up
    std::string text;  // without the "[unixODBC][FreeTDS]" in front

    // True for a notice ("01…") that comes with a success as well.
    bool is_notice() const { return sqlstate.starts_with("01"); }
};
std::vector<Diagnostic> diagnostics_of(SQLSMALLINT kind, SQLHANDLE handle);

}  // namespace database
