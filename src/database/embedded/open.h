// Opening an embedded shop file.
#pragma once

#include <filesystem>
#include <memory>

#include "database/connection.h"

namespace database {

// Opens an embedded shop file; creates an empty one only when asked to. Throws Error with a reason if the
// file is missing, a folder, read-only, or not a shop file (corrupt).
std::unique_ptr<Connection> open_embedded(const std::filesystem::path& file, bool create = false);

}  // namespace database
