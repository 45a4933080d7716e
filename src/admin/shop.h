// The shop that commands work on, and what they ask about it. Functions that cannot do their work throw
// Refused with the reason.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "admin/tool.h"
#include "database/connection.h"
#include "shop/place.h"
#include "startup/shop_files.h"

namespace admin {

using shop::is_embedded;
using shop::new_place;
using shop::open_place;
using shop::or_refuse;
using shop::Place;
using shop::shop_version;
using shop::write_place;
using shop::write_shop_files;
using startup::home_of;

// What is encrypted on the way to a server: "login: …".
std::string encryption_words(const Place& place);

// The connection file of a folder.
Place read_place(const std::filesystem::path& folder);

std::unique_ptr<database::Connection> open_shop(const Tool& tool);

// The text of the version file.
std::string read_version(const std::filesystem::path& folder);

// The activity log; it may not exist yet.
std::filesystem::path log_file(const std::filesystem::path& folder);

// The password of the login sa, with which the tills open a server's database.
std::string ask_login_password(Tool& tool);
// Writes the password where a till of this folder looks for it, readable only by its owner; returns the
// file's path.
std::string keep_login_password(const std::filesystem::path& folder, const std::string& password);
// Returns true if a till of this folder finds a password, right or wrong.
bool has_login_password(const std::filesystem::path& folder);

// What shop::make_place and shop::make_shop need for a shop on a server: asks for the password of its login
// and keeps it, unless one is kept.
std::function<std::filesystem::path()> keeping_password(const std::filesystem::path& folder, Tool& tool);
void say_where(const std::filesystem::path& folder, Tool& tool);

// Adds the options --server, --database, --address and --encryption. `with_server` is the help text of
// --server.
void add_place_options(CLI::App& command, Place& place, const Tool& tool, const std::string& with_server);

// Adds the option --encryption alone.
CLI::Option* add_encryption_option(CLI::App& command, Place& place, const Tool& tool);

}  // namespace admin
