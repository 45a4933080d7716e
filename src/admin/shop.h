// The shop of a folder: its files, its database opened as the till opens it, and how both are created.
// Functions that cannot do their work throw Refused with the reason.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "admin/tool.h"
#include "database/connection.h"
#include "startup/connection_file.h"

namespace admin {

// What the connection file says about the database.
using Place = startup::ConnectionRecord;
inline const Place new_place{std::string(startup::embedded_source), "shop.db"};  // of a new shop, by default

bool is_embedded(const Place& place);

// What is encrypted on the way to a server: "login: …".
std::string encryption_words(const Place& place);

// The connection file of a folder; writing returns its path.
Place read_place(const std::filesystem::path& folder);
std::filesystem::path write_place(const std::filesystem::path& folder, const Place& place);

std::unique_ptr<database::Connection> open_place(const std::filesystem::path& folder, const Place& place);
std::unique_ptr<database::Connection> open_shop(const Tool& tool);

// The version string for new shops: this build's.
std::string shop_version();

// The program folder of the shop in a folder, with version file, log and password file: TALLVEX_HOME if it is
// set, else the shop's folder if it has a version file, else the executable's folder.
std::filesystem::path home_of(const std::filesystem::path& folder);

// Writes the version file and an empty credit file into a folder if they are missing; returns the paths of
// those it wrote.
std::vector<std::filesystem::path> write_shop_files(const std::filesystem::path& folder);

// The text of the version file.
std::string read_version(const std::filesystem::path& folder);

// The activity log, which need not exist.
std::filesystem::path log_file(const std::filesystem::path& folder);

// The password of the login sa, with which the tills open a server's database.
std::string ask_login_password(Tool& tool);
// Writes it where a till of this folder looks for it, readable only by its owner; returns the file's path.
std::string keep_login_password(const std::filesystem::path& folder, const std::string& password);
// Returns true if a till of this folder finds a password, right or wrong.
bool has_login_password(const std::filesystem::path& folder);

// Creates the folder, the files and an empty database, which `fill` gives its schema and rows. Refused, and
// nothing is left, if there is a shop already or the folder cannot be written. An embedded shop gets its name
// when it is complete. On a server a failure leaves what was written; the message then says what to do.
void make_place(const std::filesystem::path& folder, const Place& place, Tool& tool,
                const std::function<void(database::Connection&)>& fill);

// Refused if a name of a user or a shop has a control character, or a mark that turns the direction of what
// follows: it could be taken for another name.
void require_plain_name(std::string_view name);

// Adds the options --server, --database, --address and --encryption. `with_server` is the help text of
// --server.
void add_place_options(CLI::App& command, Place& place, const std::string& with_server);

// Adds the option --encryption alone.
CLI::Option* add_encryption_option(CLI::App& command, Place& place);

}  // namespace admin
