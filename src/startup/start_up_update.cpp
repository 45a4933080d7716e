// How a start compares its version with the shop's and brings the shop up to date.
#include <algorithm>
#include <cctype>

#include "backup/automatic.h"
#include "backup/backup.h"
#include "common/text.h"
#include "database/schema/schema.h"
#include "startup/messages.h"
#include "startup/reasons.h"
#include "startup/shop_version.h"
#include "startup/start_up.h"
#include "startup/workstation.h"

namespace startup {

using common::Icon;

// The till on the server machine stamps its version; every other till must have the stamped version. No till
// takes a shop back to an older version. Returns false after telling the cashier that this one may not start.
bool StartUp::check_version() {
    stamp_ = read_stamp(*connection_);
    stamps_ = source_.is_embedded() || is_this_machine(source_.server, session_.computer_name);
    const bool is_same = stamp_.version == common::trim(session_.version);
    const bool older = is_older(session_.version, stamp_.version);
    if (is_same || (stamps_ && !older)) return true;
    progress("version " + session_.version + " differs from the stamped " + stamp_.version);
    std::string text = std::string(message::version_differs) + stamp_.version;
    if (older) text += "\n" + std::string(message::program_older) + session_.version;
    services_.prompts.message(text, Icon::critical);
    return false;
}

// Stamps the version, then runs the upgrade list; the other way round if the list has to add the stamp's
// column.
void StartUp::stamp_and_upgrade() {
    const auto stamp = [this] {
        write_stamp(*connection_, session_.version);
        progress("version stamped");
    };
    if (stamps_ && stamp_.has_column) stamp();
    progress("schema upgrade");
    database::run_upgrade_list(*connection_);
    if (stamps_ && !stamp_.has_column) stamp();
}

// A shop in a file is updated in one transaction, so that a crash leaves it as it was, and is copied before
// that transaction ends, when the copy still shows the shop before the update.
void StartUp::update_shop() {
    if (source_.is_embedded()) {
        database::Transaction transaction(*connection_);
        const std::string before = database::schema_text(*connection_);
        stamp_and_upgrade();
        const bool new_version = !stamp_.version.empty() && stamp_.version != session_.version;
        if (new_version || database::schema_text(*connection_) != before) keep_copy();
        transaction.commit();
    } else {
        stamp_and_upgrade();
    }
    connection_->make_durable();
}

// The upgrade list ignores its failures. So a login that may not alter tables, or a server that does not know
// a statement, leaves a shop in which screens would fail one by one. Returns false, after saying so, if the
// till cannot work at all.
bool StartUp::check_schema() {
    if (source_.is_embedded()) return true;
    std::vector<database::Missing> missing;
    try {
        missing = database::missing_parts(*connection_);
    } catch (const database::Error& error) {
        if (error.is_connection_lost()) throw;
        progress(std::string("the schema was not compared: ") + error.what());
    }
    std::erase_if(missing, [](const database::Missing& one) { return one.is_optional(); });
    if (missing.empty()) return true;
    const bool goes_on = std::none_of(missing.begin(), missing.end(),
                                      [](const database::Missing& one) { return one.is_needed(); });
    std::stable_partition(missing.begin(), missing.end(),
                          [](const database::Missing& one) { return one.is_needed(); });
    constexpr std::size_t most_shown = 6;
    std::string shown(goes_on ? message::schema_incomplete : message::schema_unusable);
    std::string all;
    for (std::size_t i = 0; i < missing.size(); ++i) {
        all += " " + missing[i].name();
        if (i < most_shown) shown += "\n\u200E" + missing[i].name();
    }
    if (missing.size() > most_shown)
        shown += "\n" + std::string(message::and_others) + std::to_string(missing.size() - most_shown);
    services_.log.log_event("missing in the database:" + all, failure_log_code);
    services_.prompts.message(shown, goes_on ? Icon::exclamation : Icon::critical);
    return goes_on;
}

// Copies the shop as it was before the update, beside it, and keeps the last copies.
void StartUp::keep_copy() {
    constexpr std::string_view prefix = "before-update-";
    constexpr std::size_t kept = 3;
    const std::filesystem::path shop = shop_file(record_, environment_.working_folder);
    const std::filesystem::path folder = shop.parent_path();
    std::string version = stamp_.version.empty() ? "unstamped" : stamp_.version;
    for (char& c : version)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '.') c = '-';
    // "before-update-20261121-104200-1.0.0.backup"
    const std::string name =
        std::filesystem::path(backup::name_at(prefix, services_.clock.now())).stem().string() + "-" + version;
    std::filesystem::path copy = folder / (name + ".backup");
    for (int number = 2; std::filesystem::exists(copy); ++number)
        copy = folder / (name + "-" + std::to_string(number) + ".backup");
    progress("copy before the update: " + copy.filename().string());
    const auto copying = [&](const std::function<void(int)>& tell) {
        backup::back_up(shop, copy, [&](const std::string&, std::size_t done, std::size_t total) {
            tell(total == 0 ? 100 : static_cast<int>(done * 100 / total));
        });
    };
    try {
        if (environment_.show_copying)
            environment_.show_copying(copying);
        else
            copying([](int) {});
    } catch (const backup::Error& error) {
        throw StartUpError(error.what(), std::string(message::no_copy_before_update));
    }
    backup::keep_newest(folder, prefix, kept);
}

}  // namespace startup
