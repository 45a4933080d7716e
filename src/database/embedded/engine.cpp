#include "database/embedded/engine.h"

#include <cerrno>
#include <memory>

namespace database::embedded {

namespace {

// "UNIQUE constraint failed: items.code" to "items.code".
std::string after_colon(const std::string& message) {
    const auto colon = message.find(": ");
    return colon == message.npos ? std::string() : message.substr(colon + 2);
}

bool is_own_message(const std::string& message) {
    return message.size() > 6 && message[5] == '|' &&
           message.find_first_not_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ") == 5;
}

// A full disk shows in codes other than SQLITE_FULL too, if the log or the memory map beside the shop file
// cannot be created or grow. A write that fails for another reason is rare and needs a look at the disk too.
bool is_disk_full(sqlite3* engine, int extended) {
    if (extended == SQLITE_IOERR_WRITE || extended == SQLITE_IOERR_SHMSIZE) return true;
    const int cause = engine == nullptr ? 0 : sqlite3_system_errno(engine);
    return cause == ENOSPC || cause == EDQUOT || cause == EFBIG;
}

// A disk that failed is often mounted again as read-only; the log beside the shop file cannot be opened then.
bool is_read_only(sqlite3* engine) {
    const int cause = engine == nullptr ? 0 : sqlite3_system_errno(engine);
    return cause == EROFS || cause == EACCES;
}

Error ordinary_error(const std::string& message, std::string statement) {
    // Raised by our own functions, with the SQLSTATE in front.
    if (is_own_message(message)) return {message.substr(0, 5), message.substr(6), std::move(statement)};
    if (message.starts_with("no such table")) {
        return {"42S02", "Invalid object name '" + after_colon(message) + "'.", std::move(statement)};
    }
    if (message.starts_with("no such column")) {
        return {"42S22", "Invalid column name '" + after_colon(message) + "'.", std::move(statement)};
    }
    if (message == "integer overflow") {
        return {"22003", "Arithmetic overflow error converting expression to data type bigint.",
                std::move(statement)};
    }
    return {"42000", message, std::move(statement)};
}

}  // namespace

Error engine_error(sqlite3* engine, int code, std::string_view statement_text) {
    std::string statement(statement_text);
    const std::string message = engine == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(engine);
    const int extended = engine == nullptr ? code : sqlite3_extended_errcode(engine);
    const int primary = code & 0xFF;
    const bool file_failed = primary == SQLITE_IOERR || primary == SQLITE_CANTOPEN;
    if (primary == SQLITE_READONLY || (file_failed && is_read_only(engine)))
        return {"HY000", "The shop file is read-only.", std::move(statement), Error::Kind::read_only};
    if (primary == SQLITE_FULL || (file_failed && is_disk_full(engine, extended))) {
        return {"HY000", "The disk is full: the shop file cannot grow.", std::move(statement),
                Error::Kind::disk_full};
    }
    switch (primary) {
        case SQLITE_ERROR:
            return ordinary_error(message, std::move(statement));
        case SQLITE_CONSTRAINT:
            if (extended == SQLITE_CONSTRAINT_NOTNULL) {
                return {"23000",
                        "Cannot insert the value NULL into column '" + after_colon(message) +
                            "'; column does not allow nulls.",
                        std::move(statement)};
            }
            return {"23000",
                    "Violation of a key constraint. Cannot insert a duplicate key in '" +
                        after_colon(message) + "'.",
                    std::move(statement)};
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return {"HYT00", "Timeout expired: the shop file is in use by another program.",
                    std::move(statement), Error::Kind::busy};
        case SQLITE_INTERRUPT:
            return {"HYT00", "Timeout expired.", std::move(statement)};
        case SQLITE_CANTOPEN:
            return {"08001", "The shop file cannot be opened: " + message + ".", std::move(statement),
                    Error::Kind::connection_lost};
        case SQLITE_IOERR:
            return {"08S01", "The shop file cannot be reached: " + message + ".", std::move(statement)};
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return {"HY000", "The shop file is damaged: " + message + ".", std::move(statement),
                    Error::Kind::file_damaged};
        case SQLITE_TOOBIG:
            return {"22001", "String or binary data would be truncated.", std::move(statement)};
        case SQLITE_NOMEM:
            return {"HY001", "There is not enough memory.", std::move(statement)};
        default:
            return {"HY000", message, std::move(statement)};
    }
}

void execute(sqlite3* engine, const std::string& sql) {
    const int code = sqlite3_exec(engine, sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) throw engine_error(engine, code, sql);
}

std::int64_t number(sqlite3* engine, const std::string& sql) {
    sqlite3_stmt* raw = nullptr;
    int code = sqlite3_prepare_v2(engine, sql.c_str(), -1, &raw, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(raw, sqlite3_finalize);
    if (code != SQLITE_OK) throw engine_error(engine, code, sql);
    code = sqlite3_step(raw);
    if (code != SQLITE_ROW && code != SQLITE_DONE) throw engine_error(engine, code, sql);
    return code == SQLITE_ROW ? sqlite3_column_int64(raw, 0) : 0;
}

void all_or_none(sqlite3* engine, const std::function<void()>& steps) {
    const bool alone = sqlite3_get_autocommit(engine) != 0;
    execute(engine, alone ? "BEGIN IMMEDIATE" : "SAVEPOINT steps");
    try {
        steps();
        execute(engine, alone ? "COMMIT" : "RELEASE steps");
    } catch (...) {
        // Some failures have ended the transaction already.
        if (sqlite3_get_autocommit(engine) == 0) {
            sqlite3_exec(engine, alone ? "ROLLBACK" : "ROLLBACK TO steps; RELEASE steps", nullptr, nullptr,
                         nullptr);
        }
        throw;
    }
}

}  // namespace database::embedded
