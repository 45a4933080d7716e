#include "backup/backup.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "backup/contents.h"
#include "common/files.h"
#include "database/embedded/functions.h"
#include "database/embedded/name_index.h"
#include "database/embedded/open.h"
#include "database/schema/schema.h"

namespace backup {

namespace fs = std::filesystem;

namespace {

constexpr int pages_at_once = 2000;  // 8 MB, then the progress is shown
constexpr int wait_for_tills_ms = 10000;

struct Close {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using File = std::unique_ptr<sqlite3, Close>;

File open_file(const fs::path& path, int flags) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
    File file(opened);
    if (result != SQLITE_OK) throw Error(path.string() + " cannot be opened: " + sqlite3_errstr(result));
    sqlite3_busy_timeout(opened, wait_for_tills_ms);
    return file;
}

// Opens a file to be written and makes it if it is missing.
File open_target(const fs::path& path) {
    // Made here, because the engine would let everybody read it and the group not write.
    const common::Descriptor made(
        open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, common::shop_file_mode));
    if (made.is_open()) fchmod(made.get(), common::shop_file_mode);
    return open_file(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
}

// The first cell that a statement gives. Throws Error, which names the file.
std::string cell(const File& file, const fs::path& path, const char* statement) {
    std::string first;
    const auto take = [](void* text, int, char** cells, char**) {
        auto& kept = *static_cast<std::string*>(text);
        if (kept.empty() && cells[0] != nullptr) kept = cells[0];
        return 0;
    };
    const int result = sqlite3_exec(file.get(), statement, take, &first, nullptr);
    if (result == SQLITE_NOTADB) throw Error(path.string() + " is no shop, or is damaged");
    if (result != SQLITE_OK)
        throw Error(path.string() + " cannot be read as a shop: " + sqlite3_errmsg(file.get()));
    return first;
}

// Copies one file's pages over another's. Reads `source` in one transaction, so that the copy shows one
// moment and a busy till cannot make it start over again and again.
void copy_pages(sqlite3* source, sqlite3* target, const std::string& label, const Progress& progress) {
    if (sqlite3_exec(source, "begin; select count(*) from sqlite_master", nullptr, nullptr, nullptr) !=
        SQLITE_OK) {
        throw Error(std::string("the file cannot be read as a shop: ") + sqlite3_errmsg(source));
    }
    sqlite3_backup* copying = sqlite3_backup_init(target, "main", source, "main");
    if (copying == nullptr) throw Error(std::string("the copy cannot begin: ") + sqlite3_errmsg(target));
    int result = SQLITE_OK;
    int waits = 0;
    do {
        result = sqlite3_backup_step(copying, pages_at_once);
        const auto total = static_cast<std::size_t>(sqlite3_backup_pagecount(copying));
        if (progress)
            progress(label, total - static_cast<std::size_t>(sqlite3_backup_remaining(copying)), total);
        if (result == SQLITE_BUSY || result == SQLITE_LOCKED) {
            sqlite3_sleep(100);
            if (++waits > wait_for_tills_ms / 100) break;
        }
    } while (result == SQLITE_OK || result == SQLITE_BUSY || result == SQLITE_LOCKED);
    sqlite3_backup_finish(copying);
    sqlite3_exec(source, "commit", nullptr, nullptr, nullptr);
    if (result == SQLITE_BUSY || result == SQLITE_LOCKED) {
        throw Error("a till keeps the shop file busy; close the tills and try again");
    }
    if (result == SQLITE_FULL) throw Error("the disk is full; make room, or give a file on another disk");
    if (result != SQLITE_DONE) throw Error(std::string("the copy failed: ") + sqlite3_errstr(result));
}

// A temporary shop file. It is removed, with the files that the engine keeps beside it, unless it was
// renamed.
class TemporaryShop {
  public:
    explicit TemporaryShop(fs::path path) : path_(std::move(path)) { clear(); }
    ~TemporaryShop() { clear(); }
    TemporaryShop(const TemporaryShop&) = delete;
    TemporaryShop& operator=(const TemporaryShop&) = delete;
    const fs::path& path() const { return path_; }

  private:
    void clear() {
        std::error_code ignored;
        for (const char* ending : {"", "-wal", "-shm", "-journal"})
            fs::remove(path_.string() + ending, ignored);
    }
    fs::path path_;
};

bool is_sound(const fs::path& shop) {
    if (!fs::exists(shop)) return false;
    try {
        check_copy(shop);
        return true;
    } catch (const Error&) {
        return false;
    }
}

// Renames the shop with the files that the engine keeps beside it, which do not belong to the restored file.
void move_away(const fs::path& shop, const fs::path& to) {
    for (const char* ending : {"", "-wal", "-shm"}) {
        if (fs::exists(shop.string() + ending)) fs::rename(shop.string() + ending, to.string() + ending);
    }
}

}  // namespace

std::int64_t check_copy(const fs::path& path) {
    std::error_code failed;
    if (fs::file_size(path, failed) == 0 && !failed) throw Error(path.string() + " is empty");
    const File file = open_file(path, SQLITE_OPEN_READONLY);
    // The indexes are ordered by the shop's own comparison of texts.
    database::embedded::register_functions(file.get());
    const std::string mark = cell(file, path, "pragma application_id");
    if (mark != std::to_string(database::shop_mark))
        throw Error(path.string() + " is the database of another program");
    const std::string verdict = cell(file, path, "pragma integrity_check(1)");
    if (verdict != "ok") throw Error(path.string() + " is damaged: " + verdict);
    if (cell(file, path, "select count(*) from basic") == "0")
        throw Error(path.string() + " is not a shop: it has no settings row");
    return std::stoll(cell(file, path, "select count(*) from sales"));
}

Copy back_up(const fs::path& shop, const fs::path& target, const Progress& progress) {
    if (!fs::exists(shop)) throw Error("there is no shop file " + shop.string());
    if (fs::exists(target)) throw Error(target.string() + " exists already; give another name");
    if (const fs::path into = target.parent_path(); !fs::is_directory(into)) {
        throw Error("there is no folder " + into.string() + "; is the disk for the backups plugged in?");
    } else if (access(into.c_str(), W_OK) != 0) {
        throw Error("the folder " + into.string() + " may not be written by this user");
    }
    // Two tills of a machine may make a copy with the same name.
    const TemporaryShop copy(target.string() + ".making-" + std::to_string(getpid()));
    {
        const File source = open_file(shop, SQLITE_OPEN_READONLY);
        const File made = open_target(copy.path());
        copy_pages(source.get(), made.get(), "backup", progress);
        // An earlier version must be able to restore the copy.
        try {
            database::embedded::drop_name_indexes(made.get());
        } catch (const database::Error& error) {
            throw Error(std::string("the copy failed: ") + error.what());
        }
        // A single file, without the log that a shop in use has beside it.
        sqlite3_exec(made.get(), "pragma journal_mode = delete", nullptr, nullptr, nullptr);
    }
    Copy outcome;
    outcome.invoices = check_copy(copy.path());
    if (!common::sync_file(copy.path())) throw Error(copy.path().string() + " cannot be written to the disk");
    fs::rename(copy.path(), target);
    common::sync_file(target.parent_path());
    outcome.bytes = fs::file_size(target);
    return outcome;
}

Copy put_back(const fs::path& backup, const fs::path& shop, const fs::path& safety,
              const Progress& progress) {
    if (!fs::is_regular_file(backup)) throw Error("there is no backup " + backup.string());
    if (fs::exists(shop) && fs::equivalent(backup, shop)) throw Error("the backup is the shop file itself");
    Copy outcome;
    outcome.invoices = check_copy(backup);
    const TemporaryShop copy(shop.string() + ".restoring");
    copy_pages(open_file(backup, SQLITE_OPEN_READONLY).get(), open_target(copy.path()).get(), "backup",
               progress);
    {
        const auto connection = database::open_embedded(copy.path());
        database::run_upgrade_list(*connection);
        connection->make_durable();
        outcome.strange = strange_contents(*connection, copy.path());
    }
    if (is_sound(shop)) {
        back_up(shop, safety, progress);
    } else {
        move_away(shop, safety);
    }
    const File source = open_file(copy.path(), SQLITE_OPEN_READONLY);
    const File target = open_target(shop);
    copy_pages(source.get(), target.get(), "restore", progress);
    outcome.bytes = fs::file_size(copy.path());
    return outcome;
}

void keep_newest(const fs::path& folder, std::string_view prefix, std::size_t how_many) {
    std::error_code ignored;
    std::vector<std::string> names;
    for (fs::directory_iterator entry(folder, ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
        const std::string name = entry->path().filename();
        if (name.starts_with(prefix) && name.ends_with(".backup")) names.push_back(name);
    }
    std::sort(names.begin(), names.end(), std::greater<>());
    for (std::size_t i = how_many; i < names.size(); ++i)
        fs::remove(folder / names[i], ignored);
}

}  // namespace backup
