// Making a shop in a place where none is: whole or not at all.
#pragma once

#include <filesystem>
#include <functional>

#include "admin/shop.h"
#include "admin/tool.h"

namespace admin {

// Makes the folder, the files beside the program and an empty database, and has `fill` put schema and rows
// in. Refused, with everything left as it was, where there is a shop already or the folder cannot be written.
// An embedded shop is made aside and takes its name when it is whole; on a server, where a failure leaves
// what was written, the message says what to do.
void make_place(const std::filesystem::path& folder, const Place& place, Tool& tool,
                const std::function<void(database::Connection&)>& fill);

}  // namespace admin
