// What an embedded shop's file holds that the program did not put there.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "database/connection.h"

namespace backup {

// Names, with what to do about it, each trigger and view that is not the program's, and each column with
// texts longer than it takes. `connection` is open on the file. Reads every row.
std::vector<std::string> strange_contents(database::Connection& connection,
                                          const std::filesystem::path& file);

}  // namespace backup
