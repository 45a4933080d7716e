// SQLite used by hand: statements prepared once, values bound, columns read by number.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

class HandEngine {
  public:
    // Opens a shop file with the settings that the program opens its own with: write-ahead log, synchronous
    // NORMAL, 3 MB of cache, temporary tables in memory, the text collation of the shop's columns.
    explicit HandEngine(const std::filesystem::path& file);
    ~HandEngine();
    HandEngine(const HandEngine&) = delete;
    HandEngine& operator=(const HandEngine&) = delete;

    sqlite3_stmt* prepare(const std::string& text);
    void run(const char* statements);
    // Syncs the log to the disk, as the program does after an action that wrote.
    void make_durable();
    int changes() const { return sqlite3_changes(db_); }

  private:
    void check(int code) const;
    sqlite3* db_ = nullptr;
    std::vector<sqlite3_stmt*> prepared_;
    std::string log_name_;
    int log_ = -1;
};

// A statement with its values bound, run to its first row; reset at the end of its scope. Texts are not
// copied, so they must live as long.
class HandRun {
  public:
    template <typename... Values>
    explicit HandRun(sqlite3_stmt* statement, const Values&... values) : statement_(statement) {
        int index = 0;
        (bind(++index, values), ...);
        next();
    }
    ~HandRun() { sqlite3_reset(statement_); }
    HandRun(const HandRun&) = delete;
    HandRun& operator=(const HandRun&) = delete;

    bool row() const { return row_; }
    void next() {
        const int code = sqlite3_step(statement_);
        if (code != SQLITE_ROW && code != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(statement_)));
        row_ = code == SQLITE_ROW;
    }
    double number(int column) const { return sqlite3_column_double(statement_, column); }
    std::int64_t whole(int column) const { return sqlite3_column_int64(statement_, column); }
    bool null(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
    std::string text(int column) const {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
        return bytes == nullptr
                   ? std::string()
                   : std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)));
    }

  private:
    void bind(int index, std::int64_t value) { sqlite3_bind_int64(statement_, index, value); }
    void bind(int index, int value) { sqlite3_bind_int64(statement_, index, value); }
    void bind(int index, double value) { sqlite3_bind_double(statement_, index, value); }
    void bind(int index, const std::string& value) {
        sqlite3_bind_text(statement_, index, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
    }
    sqlite3_stmt* statement_;
    bool row_ = false;
};

}  // namespace bench
