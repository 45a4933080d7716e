// Copies of an embedded shop's file, made and put back while tills work on it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "admin/tool.h"

namespace admin {

struct BackupOutcome {
    std::uintmax_t bytes = 0;
    std::int64_t invoices = 0;  // rows of sales in the copy
};

// Writes a copy of the shop file, as it stands at one moment, to `target`, through SQLite's backup interface:
// a till may go on writing meanwhile. The copy is made aside, checked (page structure, and that it is a
// shop), synced and only then named. Refused when the target exists already or the check fails; the shop is
// never touched.
BackupOutcome back_up(const std::filesystem::path& shop, const std::filesystem::path& target, Tool& tool);

// Puts a backup in the shop file's place. The backup is checked and brought up to date by the upgrade list in
// a copy first, and the shop's present state is backed up to `safety`. Open tills see the restored rows with
// their next statement. Refused, with the shop as it was, when the backup is none or the tills never pause.
BackupOutcome put_back(const std::filesystem::path& backup, const std::filesystem::path& shop,
                       const std::filesystem::path& safety, Tool& tool);

}  // namespace admin
