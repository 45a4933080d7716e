// The copies that an embedded shop makes of itself at each shift close and when a till is left, into the
// folders of its setting `backup_to`.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "backup/backup.h"
#include "common/date_time.h"
#include "database/connection.h"

namespace backup {

// "PREFIX20261121-104200.backup": sorted by name, copies are sorted by time.
std::string name_at(std::string_view prefix, const common::Moment& moment);
inline constexpr std::string_view automatic_prefix = "shop-auto-";

// The copies (named by name_at()) that can be deleted: kept are the newest of each of the last 7 days, 4
// weeks and 12 months that have one. Other names are never returned.
std::vector<std::string> superfluous(std::vector<std::string> names, std::string_view prefix);

// The outcome for one folder: the copy, or why there is none.
struct Outcome {
    std::filesystem::path file;
    Copy copy;
    std::string failure;
};

// Copies the shop into each of its folders, thins out the older copies there, and notes in the shop when it
// was last copied and which folders failed.
std::vector<Outcome> back_up_to_folders(database::Connection& connection, const std::filesystem::path& shop,
                                        const common::Moment& now, const Progress& progress = {});

// The folders of the setting that are not there now. That is no fault: a folder may be a stick that comes
// later.
std::vector<std::string> missing_folders(database::Connection& connection);

struct State {
    std::optional<common::Moment> made;  // the last copy; nothing before the first one
    std::string failed;                  // the folders that did not get the last one, ", " between them
};
// Nothing if the shop is on a server or names no folder.
std::optional<State> state_of(database::Connection& connection);

// The state in words for the cashier: how old the last copy is, and which folders failed; the second is empty
// if none did.
std::string age_words(const State& state, const common::Date& today);
std::string failure_words(const State& state);

}  // namespace backup
