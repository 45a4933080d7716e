// Creates a shop's folder, files and database, completely or not at all.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "admin/shop.h"
#include "admin/tool.h"

namespace admin {

// Creates the folder, the files and an empty database, which `fill` gives its schema and rows. Refused, and
// nothing is left, if there is a shop already or the folder cannot be written. An embedded shop gets its name
// when it is complete. On a server a failure leaves what was written; the message then says what to do.
void make_place(const std::filesystem::path& folder, const Place& place, Tool& tool,
                const std::function<void(database::Connection&)>& fill);

// Adds the options --server, --database and --address. `with_server` is the help text of --server.
void add_place_options(CLI::App& command, Place& place, const std::string& with_server);

}  // namespace admin
