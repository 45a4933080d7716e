#include "admin/shop_files.h"

#include <cstdlib>

#include "admin/tool.h"
#include "startup/shop_files.h"
#include "startup/workstation.h"

namespace admin {

namespace fs = std::filesystem;

std::string shop_version() {
    return TALLVEX_VERSION;
}

fs::path home_of(const fs::path& folder) {
    const char* home = std::getenv("TALLVEX_HOME");
    const bool named = home != nullptr && *home != '\0';
    if (!named && startup::find_file(folder, startup::version_file_name)) return folder;
    return startup::program_folder();
}

std::vector<fs::path> write_shop_files(const fs::path& folder) {
    std::vector<fs::path> written;
    try {
        if (!startup::find_file(folder, startup::version_file_name)) {
            startup::write_version_file(folder, shop_version());
            written.push_back(folder / startup::version_file_name);
        }
        if (!startup::find_file(folder, startup::credit_file_name)) {
            startup::write_credit_file(folder, {});
            written.push_back(folder / startup::credit_file_name);
        }
    } catch (const startup::StartUpError& error) {
        throw Refused(error.what());
    }
    return written;
}

std::string read_version(const fs::path& folder) {
    try {
        return startup::read_version_file(home_of(folder));
    } catch (const startup::StartUpError& error) {
        throw Refused(error.what());
    }
}

fs::path log_file(const fs::path& folder) {
    const fs::path home = home_of(folder);
    const auto logs = startup::find_file(home, startup::logs_folder_name);
    const fs::path where = logs.value_or(home / startup::logs_folder_name);
    return startup::find_file(where, startup::log_file_name).value_or(where / startup::log_file_name);
}

}  // namespace admin
