// tallvex-admin: sets up shops and maintains them. Every command is an entry of the list below.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "admin/tool.h"
#include "common/clock.h"
#include "common/files.h"
#include "startup/shop_files.h"

int main(int argc, char** argv) {
    common::keep_files_from_others();
    const std::vector<admin::AddCommand> commands = {
        admin::add_new_shop,   admin::add_connect,      admin::add_sql,      admin::add_users,
        admin::add_check,      admin::add_import_items, admin::add_backup,   admin::add_restore,
        admin::add_copy_shop,  admin::add_show_receipt, admin::add_settings, admin::add_stamp,
        admin::add_unfinished,
    };
    common::SystemClock clock;
    std::error_code gone;
    const auto working = std::filesystem::current_path(gone);
    admin::Tool tool{std::cout,
                     std::cerr,
                     std::cin,
                     gone ? "." : working,
                     clock,
                     isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr,
                     startup::shop_folder(),
                     admin::asks_for_arabic([](const char* name) { return std::getenv(name); })};
    return admin::run_tool(commands, std::vector<std::string>(argv + 1, argv + argc), tool);
}
