// Opening an embedded shop file.
#pragma once

#include <filesystem>
#include <memory>

#include "database/connection.h"

namespace database {

// Marks a file as a shop ("TVXs"), so that a database of another program is not mistaken for one.
inline constexpr int shop_mark = 0x54565873;

// Opens an embedded shop file; creates an empty one if `create` is set. Throws Error with its kind if the
// file is missing, a folder, read-only, damaged or not a shop.
std::unique_ptr<Connection> open_embedded(const std::filesystem::path& file, bool create = false);

}  // namespace database
