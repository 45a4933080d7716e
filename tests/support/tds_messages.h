// Messages of the protocol: the requests of a client, read, and the tokens of the server's answers.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/connection.h"
#include "support/tds_values.h"

namespace test::tds {

struct Login {
    std::string user;
    std::string password;
    std::string database;
};
Login read_login(std::string_view body);

// The text of a batch.
std::string read_batch(std::string_view body);

// A call of one of the server's procedures by name, even if the client called it by number.
struct Call {
    std::string procedure;
    std::vector<std::pair<std::string, database::Value>> arguments;  // by name, "@P1"; the name may be empty

    const database::Value& at(std::size_t position) const;
    // The argument of a name, else the one at the position, as text; empty if there is neither.
    std::string text(std::string_view name, std::size_t position) const;
};
Call read_call(std::string_view body);

// A statement with "@P1" in place of values as the program has it, with "?", and the values in their order.
struct Statement {
    std::string text;
    std::vector<database::Value> values;
};
// The values are the arguments from `first` on.
Statement with_values(std::string_view text, const Call& call, std::size_t first);

// Version and "no encryption", the two options that a client waits for.
extern const std::string prelogin_answer;
// A log-in that succeeded: the database in use, the language, the packet size.
std::string login_answer(std::string_view database);

// The end of a statement. `counted`: the statement changes or gives rows; `more`: another statement of the
// batch follows.
std::string done(std::uint64_t rows = 0, bool counted = true, bool more = false);
// The same for a statement in a call, and the end of the call.
std::string done_in_call(std::uint64_t rows, bool counted);
std::string call_status();
std::string done_call();
// The end of a statement that an attention cancelled.
std::string done_cancelled();

// An error with the end of its statement; a message that is not an error.
std::string error(int number, int severity, std::string_view text);
std::string error_in_call(int number, int severity, std::string_view text);
std::string notice(int number, std::string_view text);

// A result's columns and rows; `types` as many as columns.
std::string result(const database::Result& result, const std::vector<Type>& types);
// A whole result of one row: text as nvarchar, whole numbers as bigint, doubles as float, moments as
// datetime.
std::string row(const std::vector<std::pair<std::string, database::Value>>& cells);

}  // namespace test::tds
