#include "bench/by_hand_engine.h"

#include <fcntl.h>
#include <unistd.h>

#include "database/embedded/collation.h"

namespace bench {

namespace {

int compare(void*, int a_size, const void* a, int b_size, const void* b) {
    return database::embedded::compare_texts({static_cast<const char*>(a), static_cast<std::size_t>(a_size)},
                                             {static_cast<const char*>(b), static_cast<std::size_t>(b_size)});
}

}  // namespace

HandEngine::HandEngine(const std::filesystem::path& file) : log_name_(file.string() + "-wal") {
    check(sqlite3_open_v2(file.c_str(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr));
    sqlite3_busy_timeout(db_, 30'000);
    check(sqlite3_create_collation_v2(db_, database::embedded::collation_name, SQLITE_UTF8, nullptr, compare,
                                      nullptr));
    run("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA temp_store = MEMORY; "
        "PRAGMA cache_size = -3000");
}

HandEngine::~HandEngine() {
    for (auto* statement : prepared_)
        sqlite3_finalize(statement);
    sqlite3_close_v2(db_);
    if (log_ >= 0) ::close(log_);
}

void HandEngine::check(int code) const {
    if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(db_));
}

sqlite3_stmt* HandEngine::prepare(const std::string& text) {
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v3(db_, text.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
    prepared_.push_back(statement);
    return statement;
}

void HandEngine::run(const char* statements) {
    check(sqlite3_exec(db_, statements, nullptr, nullptr, nullptr));
}

void HandEngine::make_durable() {
    if (log_ < 0) log_ = ::open(log_name_.c_str(), O_RDWR | O_CLOEXEC);
    if (log_ < 0 || ::fdatasync(log_) != 0) throw std::runtime_error("the log could not be synced");
}

}  // namespace bench
