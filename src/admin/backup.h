// Backup and restore of an embedded shop's file while tills use it.
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

// Copies the shop file as it is at one moment to `target`; tills may go on writing. The copy is checked (page
// structure, and that it is a shop) and synced before it gets its name. Refused if the target exists or the
// check fails. The shop is never changed.
BackupOutcome back_up(const std::filesystem::path& shop, const std::filesystem::path& target, Tool& tool);

// Replaces the shop by a backup. First checks a copy of the backup and runs the upgrade list on it, then
// backs up the shop's present state to `safety`. Open tills see the restored rows with their next statement.
// Refused, with the shop unchanged, if the file is not a backup or the tills never pause.
BackupOutcome put_back(const std::filesystem::path& backup, const std::filesystem::path& shop,
                       const std::filesystem::path& safety, Tool& tool);

}  // namespace admin
