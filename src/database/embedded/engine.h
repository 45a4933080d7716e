// The embedded engine's own language: short statements, and its errors as ours.
#pragma once

#include <sqlite3.h>

#include <functional>
#include <string>
#include <string_view>

#include "database/error.h"

namespace database::embedded {

// The engine's last failure in the words and with the SQLSTATE of the server.
Error engine_error(sqlite3* engine, int code, std::string_view statement);

// Runs statements of the engine's language, without a result. Throws Error.
void execute(sqlite3* engine, const std::string& sql);
// The first column of the first row as a whole number; 0 without a row.
std::int64_t number(sqlite3* engine, const std::string& sql);

// Runs `steps` so that all of them are done or none; within a transaction of the caller too.
void all_or_none(sqlite3* engine, const std::function<void()>& steps);

}  // namespace database::embedded
