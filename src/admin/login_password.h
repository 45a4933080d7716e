// The password of the login sa, with which the tills open a server's database: asked for, and kept in sa.pwd.
#pragma once

#include <filesystem>
#include <string>

#include "admin/tool.h"

namespace admin {

std::string ask_login_password(Tool& tool);
// Writes it where a till of this folder looks for it, for this user's eyes alone; returns the file's path.
std::string keep_login_password(const std::filesystem::path& folder, const std::string& password);
// Whether a till of this folder finds one, be it right or wrong.
bool has_login_password(const std::filesystem::path& folder);

}  // namespace admin
