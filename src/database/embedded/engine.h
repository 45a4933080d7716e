// Short statements in the engine's own language, and its errors as `Error`.
#pragma once

#include <sqlite3.h>

#include <functional>
#include <string>
#include <string_view>

#include "database/error.h"

namespace database::embedded {

// The engine's last failure with the text and the SQLSTATE that a server gives.
Error engine_error(sqlite3* engine, int code, std::string_view statement);

// Runs statements of the engine's language, without a result. Throws Error.
void execute(sqlite3* engine, const std::string& sql);
// The first column of the first row as a whole number; 0 if there is no row.
std::int64_t number(sqlite3* engine, const std::string& sql);

// Runs `steps` as a whole or not at all, also within a transaction of the caller.
void all_or_none(sqlite3* engine, const std::function<void()>& steps);

}  // namespace database::embedded
