// The options by which a command is told where a new shop's database is to stand.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "admin/shop.h"

namespace admin {

// `with_server` says what --server makes of the command.
inline void add_place_options(CLI::App& command, Place& place, const std::string& with_server) {
    command.add_option("--server", place.server, with_server);
    command.add_option("--database", place.database, "An empty database of the server, or the file's name")
        ->capture_default_str();
    command.add_option("--address", place.address, "Network address of the server")->capture_default_str();
}

}  // namespace admin
