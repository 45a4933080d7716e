#include "admin/backup.h"

#include <sqlite3.h>
#include <unistd.h>
#include <CLI/CLI.hpp>
#include <memory>

#include "admin/shop.h"
#include "admin/tool.h"
#include "common/files.h"
#include "database/embedded/functions.h"
#include "database/embedded/open.h"
#include "database/schema/schema.h"
#include "startup/connection_file.h"

namespace admin {

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
    if (result != SQLITE_OK) throw Refused(path.string() + " cannot be opened: " + sqlite3_errstr(result));
    sqlite3_busy_timeout(opened, wait_for_tills_ms);
    return file;
}

// Copies one file's pages over another's. Reads `source` in one transaction, so that the copy shows one
// moment and a busy till cannot make it start over again and again.
void copy_pages(sqlite3* source, sqlite3* target, const std::string& label, Tool& tool) {
    if (sqlite3_exec(source, "begin; select count(*) from sqlite_master", nullptr, nullptr, nullptr) !=
        SQLITE_OK) {
        throw Refused(std::string("the file cannot be read as a shop: ") + sqlite3_errmsg(source));
    }
    sqlite3_backup* backup = sqlite3_backup_init(target, "main", source, "main");
    if (backup == nullptr) throw Refused(std::string("the copy cannot begin: ") + sqlite3_errmsg(target));
    std::unique_ptr<Progress> progress;
    int result = SQLITE_OK;
    int waits = 0;
    do {
        result = sqlite3_backup_step(backup, pages_at_once);
        const auto total = static_cast<std::size_t>(sqlite3_backup_pagecount(backup));
        if (!progress) progress = std::make_unique<Progress>(tool, label, total);
        progress->reach(total - static_cast<std::size_t>(sqlite3_backup_remaining(backup)));
        if (result == SQLITE_BUSY || result == SQLITE_LOCKED) {
            sqlite3_sleep(100);
            if (++waits > wait_for_tills_ms / 100) break;
        }
    } while (result == SQLITE_OK || result == SQLITE_BUSY || result == SQLITE_LOCKED);
    sqlite3_backup_finish(backup);
    sqlite3_exec(source, "commit", nullptr, nullptr, nullptr);
    if (result == SQLITE_BUSY || result == SQLITE_LOCKED) {
        throw Refused("a till keeps the shop file busy; close the tills and try again");
    }
    if (result == SQLITE_FULL) throw Refused("the disk is full; make room, or give a file on another disk");
    if (result != SQLITE_DONE) throw Refused(std::string("the copy failed: ") + sqlite3_errstr(result));
}

// Checks the structure of every page, row and index. Refused with the first fault.
void check_structure(const fs::path& path) {
    const File file = open_file(path, SQLITE_OPEN_READONLY);
    // The indexes are ordered by the shop's own comparison of texts.
    database::embedded::register_functions(file.get());
    std::string verdict;
    const auto take = [](void* text, int, char** cells, char**) {
        auto& first = *static_cast<std::string*>(text);
        if (first.empty() && cells[0] != nullptr) first = cells[0];
        return 0;
    };
    const int result = sqlite3_exec(file.get(), "pragma integrity_check(1)", take, &verdict, nullptr);
    if (result != SQLITE_OK) verdict = sqlite3_errmsg(file.get());
    if (verdict != "ok") throw Refused(path.string() + " is damaged: " + verdict);
}

std::int64_t count_invoices(const fs::path& path) {
    const auto connection = database::open_embedded(path);
    if (connection->query("select * from basic").empty()) {
        throw Refused(path.string() + " is not a shop: it has no settings row");
    }
    return database::integer_of(connection->scalar("select count(*) from sales"));
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
        check_structure(shop);
        return true;
    } catch (const Refused&) {
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

BackupOutcome back_up(const fs::path& shop, const fs::path& target, Tool& tool) {
    if (!fs::exists(shop)) throw Refused("there is no shop file " + shop.string());
    if (fs::exists(target)) throw Refused(target.string() + " exists already; give another name");
    if (const fs::path into = target.parent_path(); !fs::is_directory(into)) {
        throw Refused("there is no folder " + into.string() + "; is the disk for the backups plugged in?");
    } else if (access(into.c_str(), W_OK) != 0) {
        throw Refused("the folder " + into.string() + " may not be written by this user");
    }
    const TemporaryShop copy(target.string() + ".making");
    {
        const File source = open_file(shop, SQLITE_OPEN_READONLY);
        const File made = open_file(copy.path(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        copy_pages(source.get(), made.get(), "backup", tool);
        // A single file, without the log that a shop in use has beside it.
        sqlite3_exec(made.get(), "pragma journal_mode = delete", nullptr, nullptr, nullptr);
    }
    check_structure(copy.path());
    BackupOutcome outcome;
    {
        const TemporaryShop trial(target.string() + ".trial");
        fs::copy_file(copy.path(), trial.path());
        outcome.invoices = count_invoices(trial.path());
    }
    if (!common::sync_file(copy.path()))
        throw Refused(copy.path().string() + " cannot be written to the disk");
    fs::rename(copy.path(), target);
    outcome.bytes = fs::file_size(target);
    return outcome;
}

BackupOutcome put_back(const fs::path& backup, const fs::path& shop, const fs::path& safety, Tool& tool) {
    if (!fs::is_regular_file(backup)) throw Refused("there is no backup " + backup.string());
    if (fs::exists(shop) && fs::equivalent(backup, shop)) throw Refused("the backup is the shop file itself");
    check_structure(backup);
    const TemporaryShop copy(shop.string() + ".restoring");
    fs::copy_file(backup, copy.path());
    BackupOutcome outcome;
    outcome.invoices = count_invoices(copy.path());
    {
        const auto connection = database::open_embedded(copy.path());
        database::run_upgrade_list(*connection);
        connection->make_durable();
    }
    if (is_sound(shop)) {
        back_up(shop, safety, tool);
    } else {
        move_away(shop, safety);
    }
    const File source = open_file(copy.path(), SQLITE_OPEN_READONLY);
    const File target = open_file(shop, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    copy_pages(source.get(), target.get(), "restore", tool);
    outcome.bytes = fs::file_size(copy.path());
    return outcome;
}

namespace {

fs::path embedded_file(const Tool& tool) {
    const Place place = read_place(tool.folder);
    if (!is_embedded(place)) {
        throw Refused("the shop is on the server " + place.server +
                      "; back it up with the server's own tools");
    }
    return startup::shop_file(place, tool.folder);
}

// "20261121-104200": for file names, sorted by time.
std::string stamp(const Tool& tool) {
    std::string text = common::moment_text(tool.clock.now());
    std::erase(text, '/');
    std::erase(text, ':');
    std::replace(text.begin(), text.end(), ' ', '-');
    return text;
}

// The path with ".backup", or with a number before that if two restores happen in one second.
fs::path free_name(const fs::path& path) {
    fs::path name = path.string() + ".backup";
    for (int number = 2; fs::exists(name); ++number)
        name = path.string() + "-" + std::to_string(number) + ".backup";
    return name;
}

void print(const BackupOutcome& outcome, std::string_view what, const fs::path& file, Tool& tool) {
    tool.out << what << ' ' << file.string() << ": " << outcome.bytes << " bytes, " << outcome.invoices
             << " invoices, checked\n";
}

}  // namespace

void add_backup(CLI::App& program, Tool& tool) {
    const auto file = std::make_shared<std::string>();
    CLI::App* command = program.add_subcommand(
        "backup", "Copies the embedded shop to a file, while tills work, and checks the copy");
    command->add_option("file", *file,
                        "The file to write, or the folder for shop-DATE-TIME.backup; without it that file in "
                        "the working directory");
    command->callback([file, &tool] {
        const std::string named_by_clock = "shop-" + stamp(tool) + ".backup";
        fs::path target = tool.folder / (file->empty() ? named_by_clock : *file);
        if (fs::is_directory(target)) target /= named_by_clock;
        print(back_up(embedded_file(tool), target, tool), "backup", target, tool);
    });
}

void add_restore(CLI::App& program, Tool& tool) {
    const auto file = std::make_shared<std::string>();
    CLI::App* command = program.add_subcommand(
        "restore", "Puts a backup in the embedded shop's place; what was there is backed up first");
    command->add_option("file", *file, "The backup")->required();
    command->callback([file, &tool] {
        const fs::path shop = embedded_file(tool);
        const fs::path safety = free_name(tool.folder / ("before-restore-" + stamp(tool)));
        const BackupOutcome outcome = put_back(tool.folder / *file, shop, safety, tool);
        print(outcome, "restored", *file, tool);
        if (fs::exists(safety)) tool.out << "what was there before is in " << safety.string() << '\n';
    });
}

}  // namespace admin
