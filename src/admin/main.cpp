// tallvex-admin: sets up shops and maintains them. Every command is an entry of the list below.
#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "admin/tool.h"
#include "common/clock.h"

int main(int argc, char** argv) {
    const std::vector<admin::AddCommand> commands = {
        admin::add_new_shop,  admin::add_connect,      admin::add_sql,      admin::add_users,
        admin::add_check,     admin::add_import_items, admin::add_backup,   admin::add_restore,
        admin::add_copy_shop, admin::add_show_receipt, admin::add_settings,
    };
    common::SystemClock clock;
    admin::Tool tool{
        std::cout, std::cerr, std::cin, std::filesystem::current_path(), clock, isatty(STDERR_FILENO) != 0};
    return admin::run_tool(commands, std::vector<std::string>(argv + 1, argv + argc), tool);
}
