// The shop of the working directory: its connection file, and its database opened as the till opens it.
#pragma once

#include <filesystem>
#include <memory>

#include "admin/tool.h"
#include "database/connection.h"
#include "startup/connection_file.h"

namespace admin {

// Where a shop's database is, as the connection file has it.
using Place = startup::ConnectionRecord;
// Where a new shop goes if nothing else is said.
inline const Place new_place{std::string(startup::embedded_source), "shop.db"};

bool is_embedded(const Place& place);

// Reads and writes the connection file of a folder; writing returns its path. Refused with a reason when
// there is none, it is no connection file, or a text does not fit its field.
Place read_place(const std::filesystem::path& folder);
std::filesystem::path write_place(const std::filesystem::path& folder, const Place& place);
bool has_connection_file(const std::filesystem::path& folder);

// Opens the database of a place; the login's password is found as the till finds it.
std::unique_ptr<database::Connection> open_place(const std::filesystem::path& folder, const Place& place);
std::unique_ptr<database::Connection> open_shop(const Tool& tool);

// The file of an embedded shop.
std::filesystem::path shop_file(const std::filesystem::path& folder, const Place& place);

}  // namespace admin
