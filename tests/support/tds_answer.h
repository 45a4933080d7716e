// Tokens of the server's answers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"
#include "support/tds_values.h"

namespace test::tds {

// Version and "no encryption", the two options that a client waits for.
extern const std::string prelogin_answer;
// A log-in that succeeded: the database in use, the language, the packet size.
std::string login_answer(std::string_view database);

// The end of a statement. `counted`: the statement changes or gives rows.
std::string done(std::uint64_t rows = 0, bool counted = true);
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
