// The files that stand beside the program, as the administrator's commands need them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace admin {

// The version string that new shops are stamped with: this build's.
std::string shop_version();

// The program folder of the shop in a folder, which holds version file, log and password file: TALLVEX_HOME
// where it is set, else the shop's folder when the version file stands there, else the executable's folder.
std::filesystem::path home_of(const std::filesystem::path& folder);

// Writes the version file and an empty credit file into a folder, each only where there is none; returns the
// paths of those it wrote.
std::vector<std::filesystem::path> write_shop_files(const std::filesystem::path& folder);

// The version file's text. Refused when there is none or it is damaged.
std::string read_version(const std::filesystem::path& folder);

// The activity log, which need not exist.
std::filesystem::path log_file(const std::filesystem::path& folder);

}  // namespace admin
