// The commands of tallvex-admin, each in a file of its own. A new one is declared here, or in the room it
// needs, and listed in main.cpp.
#pragma once

#include "admin/tool.h"

namespace admin {

void add_connect(CLI::App& program, Tool& tool);
void add_new_shop(CLI::App& program, Tool& tool);
void add_sql(CLI::App& program, Tool& tool);
void add_users(CLI::App& program, Tool& tool);
void add_check(CLI::App& program, Tool& tool);
void add_import_items(CLI::App& program, Tool& tool);
void add_backup(CLI::App& program, Tool& tool);
void add_restore(CLI::App& program, Tool& tool);
void add_copy_shop(CLI::App& program, Tool& tool);
void add_show_receipt(CLI::App& program, Tool& tool);

}  // namespace admin
