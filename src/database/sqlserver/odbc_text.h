// Text and diagnostics of ODBC: UTF-8 inside, 16-bit characters at the driver. The server's error numbers
// tell what went wrong, because its texts come in any language.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"

namespace database {

// UTF-16 with a closing zero, as the wide functions take it. Malformed bytes become U+FFFD.
std::vector<SQLWCHAR> to_wide(std::string_view utf8);
std::string from_wide(const SQLWCHAR* text, std::size_t length);

// A statement as a server needs it. N stands before every literal that holds more than ASCII: a server whose
// collation is not Arabic would read the characters of a plain '…' as question marks. A moment's "?" becomes
// convert(datetime,?): the driver sends moments as datetime2, and on newer servers a datetime with
// thousandths never equals one. Zero characters are left out: the driver would end the statement at the
// first.
std::string server_text(std::string_view statement, const std::vector<Value>& values = {});

// The end of the text or name in quotes that begins at `at`. Doubled closing marks do not end it.
std::size_t end_of_quoted(std::string_view statement, std::size_t at);

// Statements as one text: the server stops behind the first that fails, and says after each how many rows it
// changed, in a result of one column. Values are written into the text, because a call with parameters must
// end the transactions that it begins, and takes at most 2,100 of them.
std::string batch_text(const std::vector<Command>& commands);
// The parts of such a text. It begins with the first; the second follows each statement, or the third if the
// statement must change a row.
inline constexpr std::string_view batch_opening = "declare @till_error int, @till_rows int\n";
inline constexpr std::string_view batch_mark =
    ";\nselect @till_error = @@error, @till_rows = @@rowcount\n"
    "if @till_error <> 0 return\nselect @till_rows as till_rows\n";
inline constexpr std::string_view batch_must_change = "if @till_rows = 0 return\n";
inline constexpr std::string_view batch_rows = "till_rows";  // the column

// One record of what a driver says about a handle.
struct Diagnostic {
    std::string sqlstate;
    int native = 0;    // the server's number, or one of FreeTDS's own
    std::string text;  // without the "[unixODBC][FreeTDS]" in front

    // Returns true for a notice ("01…"); a success can have one too.
    bool is_notice() const { return sqlstate.starts_with("01"); }
    // Returns true for an error of the server itself; those of FreeTDS begin at 20000.
    bool is_from_server() const { return native > 0 && (native < 20000 || native >= 21000); }
};
std::vector<Diagnostic> diagnostics_of(SQLSMALLINT kind, SQLHANDLE handle);

// Returns true if the error means that the database is missing or closed to this login.
bool is_missing_database(int number);

// An Error with the server's text, and with the SQLSTATE that the embedded engine gives for the same failure.
Error server_error(const Diagnostic& said, std::string_view statement);

}  // namespace database
