// The checks of an embedded shop's file and of its backups.
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "admin/checks.h"
#include "backup/automatic.h"
#include "backup/contents.h"
#include "common/files.h"
#include "database/till_settings.h"

namespace admin {

namespace fs = std::filesystem;
using database::Connection;

namespace {

bool are_on_one_disk(const fs::path& a, const fs::path& b) {
    struct stat first {
    }, second{};
    return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev;
}

}  // namespace

Findings check_backups(Connection& connection, const fs::path& shop, const common::Date& today) {
    Findings findings;
    const auto add = [&](Verdict verdict, std::string text) {
        findings.push_back({verdict, "backups", std::move(text)});
    };
    const auto state = backup::state_of(connection);
    if (!state) {
        add(Verdict::note,
            "the shop makes none by itself; name a folder on a stick or another disk: tallvex-admin settings "
            "backup_to FOLDER");
        return findings;
    }
    const auto folders = database::backup_folders(connection);
    const auto is_near = [&](const fs::path& folder) { return are_on_one_disk(shop, folder); };
    if (std::all_of(folders.begin(), folders.end(), is_near))
        add(Verdict::note, "all folders are on the shop's own disk, and would be lost with it");
    if (!state->failed.empty()) {
        add(Verdict::wrong,
            "the last one did not get to " + state->failed +
                "; see that the stick is in, has room and may be written, then: tallvex-admin "
                "backup --automatic");
    }
    constexpr long days_without_worry = 3;
    if (!state->made) {
        add(Verdict::note, "none has been made yet; the next shift close makes one");
    } else if (common::days_from_epoch(today) - common::days_from_epoch(state->made->date) >
               days_without_worry) {
        add(Verdict::wrong, "the last one is of " + common::moment_text(*state->made) +
                                "; make one: tallvex-admin backup --automatic");
    } else {
        add(Verdict::good, common::moment_text(*state->made));
    }
    return findings;
}

Findings check_files(Connection& connection, const fs::path& shop) {
    Findings findings;
    std::error_code ignored;
    if ((fs::status(shop, ignored).permissions() & fs::perms::others_all) != fs::perms::none) {
        findings.push_back({Verdict::wrong, "files",
                            shop.string() + " may be used by everybody on this machine: chmod o= " +
                                shop.filename().string()});
    }
    for (const std::string& strange : backup::strange_contents(connection, shop))
        findings.push_back({Verdict::wrong, "files", strange});
    if (findings.empty()) findings.push_back({Verdict::good, "files", shop.filename().string()});
    return findings;
}

}  // namespace admin
