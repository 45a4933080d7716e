#include "admin/login_password.h"

#include <cstdlib>

#include "admin/password.h"
#include "admin/shop_files.h"
#include "startup/shop_files.h"

namespace admin {

namespace fs = std::filesystem;

std::string ask_login_password(Tool& tool) {
    return ask_password(tool, "the login sa", "no server takes an empty one");
}

std::string keep_login_password(const fs::path& folder, const std::string& password) {
    const fs::path home = home_of(folder);
    try {
        startup::write_sa_password(home, password);
    } catch (const startup::StartUpError& error) {
        throw Refused(error.what());
    }
    return (home / startup::password_file_name).string();
}

bool has_login_password(const fs::path& folder) {
    return std::getenv("TALLVEX_SA_PASSWORD") != nullptr ||
           startup::find_file(home_of(folder), startup::password_file_name).has_value();
}

}  // namespace admin
