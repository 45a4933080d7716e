// Opens a shop file, or explains why a file is not a shop.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/files.h"
#include "database/embedded/connection.h"
#include "database/embedded/definitions.h"
#include "database/embedded/engine.h"
#include "database/embedded/functions.h"
#include "database/embedded/open.h"

namespace database::embedded {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const fs::path& file, const std::string& why, Error::Kind kind) {
    throw Error("08001", "The shop file \"" + file.string() + "\" " + why + ".", "", kind);
}

// Returns true if the file must be made: it is missing and `create` allows making it. Never opens the file:
// closing a descriptor would release the locks of every connection that this process has to it.
bool check_file(const fs::path& file, bool create) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::exists(status)) {
        if (status.type() != fs::file_type::not_found)
            refuse(file, "cannot be reached: " + error.message(), Error::Kind::connection_lost);
        if (!create) refuse(file, "does not exist", Error::Kind::file_missing);
        const fs::path folder = file.parent_path().empty() ? "." : file.parent_path();
        if (!fs::is_directory(folder, error))
            refuse(file, "cannot be made: its folder does not exist", Error::Kind::file_missing);
        if (::access(folder.c_str(), W_OK) != 0)
            refuse(file, "cannot be made: its folder is read-only", Error::Kind::read_only);
        return true;
    }
    if (fs::is_directory(status)) refuse(file, "is a folder", Error::Kind::file_is_folder);
    if (!fs::is_regular_file(status)) refuse(file, "is no file", Error::Kind::file_damaged);
    if (::access(file.c_str(), R_OK) != 0) refuse(file, "cannot be read", Error::Kind::file_unreadable);
    if (fs::file_size(file, error) == 0) {
        if (!create) refuse(file, "is empty and no shop", Error::Kind::file_damaged);
        return true;
    }
    if (::access(file.c_str(), W_OK) != 0) refuse(file, "is read-only", Error::Kind::read_only);
    // The engine writes its log beside the file.
    const fs::path folder = file.parent_path().empty() ? "." : file.parent_path();
    if (::access(folder.c_str(), W_OK) != 0)
        refuse(file, "is in a folder that is read-only", Error::Kind::read_only);
    return false;
}

// The engine would let everybody read the file and the group not write. A file that exists is not opened.
void make_file(const fs::path& file) {
    const common::Descriptor made(
        ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, common::shop_file_mode));
    if (made.is_open()) ::fchmod(made.get(), common::shop_file_mode);
}

}  // namespace

void EmbeddedConnection::open(const fs::path& file, bool create) {
    const bool fresh = check_file(file, create);
    if (fresh) make_file(file);
    sqlite3* raw = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (fresh ? SQLITE_OPEN_CREATE : 0) | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(file.c_str(), &raw, flags, nullptr);
    engine_.reset(raw);
    if (code != SQLITE_OK)
        refuse(file, std::string("cannot be opened: ") + sqlite3_errstr(code), Error::Kind::connection_lost);
    try {
        prepare_engine(fresh);
    } catch (const Error& error) {
        refuse(file, std::string("cannot be opened: ") + error.what(), error.kind());
    }
}

void EmbeddedConnection::prepare_engine(bool fresh) {
    sqlite3* engine = engine_.get();
    sqlite3_extended_result_codes(engine, 1);
    set_timeout(timeout_);
    // An unknown name in double quotes must not turn into a text.
    sqlite3_db_config(engine, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(engine, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    // A prepared statement keeps its plan for all values.
    sqlite3_db_config(engine, SQLITE_DBCONFIG_ENABLE_QPSG, 1, nullptr);
    register_functions(engine);
    if (sqlite3_db_readonly(engine, "main") == 1)
        throw Error("08001", "it is read-only", "", Error::Kind::read_only);
    if (!fresh) {
        // This detects damaged files and files of other programs.
        const std::int64_t mark = number(engine, "PRAGMA application_id");
        const std::int64_t tables = number(engine, "SELECT count(*) FROM sqlite_schema");
        if (mark != shop_mark && tables > 0)
            throw Error("08001", "it belongs to another program", "", Error::Kind::file_damaged);
    }
    // 3 MB of pages are enough for a till: a larger cache was no faster at sales, searches and sums over a
    // million invoices, and only filled up over the day.
    embedded::execute(engine,
                      "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA temp_store = MEMORY; "
                      "PRAGMA cache_size = -3000");
    if (fresh) embedded::execute(engine, "PRAGMA application_id = " + std::to_string(shop_mark));
    catalog_ = Catalog(engine);
    catalog_.rounds_reals = observer_ && observer_->rounds_reals();
    catalog_.load();
    const std::vector<Value> none;
    Definitions(engine, catalog_, none).add_own_indexes();
    schema_version_ = number(engine, "PRAGMA schema_version");
}

}  // namespace database::embedded

std::unique_ptr<database::Connection> database::open_embedded(const std::filesystem::path& file,
                                                              bool create) {
    return std::make_unique<embedded::EmbeddedConnection>(file, create);
}
