// Opening an embedded shop file.
#pragma once

#include <filesystem>
#include <memory>

#include "database/connection.h"

namespace database {

// Opens an embedded shop file; creates an empty one if `create` is set. Throws Error with its kind if the
// file is missing, a folder, read-only, damaged or not a shop.
std::unique_ptr<Connection> open_embedded(const std::filesystem::path& file, bool create = false);

}  // namespace database
