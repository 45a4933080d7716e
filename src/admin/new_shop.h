// Creates a new shop: base schema, settings, store, drawer, worker, administrator, and the program's files.
#pragma once

#include <filesystem>
#include <string>

#include "admin/shop.h"
#include "admin/tool.h"

namespace admin {

struct NewShop {
    std::filesystem::path folder;  // for the files; created if missing
    Place place = new_place;       // where the database goes
    std::string name;              // on receipts; empty: a neutral one, or the demo shop's
    std::string telephone;
    std::string printer_port = "win";
    std::string drawer_port = "com1";
    std::string administrator;  // the first user's name; empty: a neutral one
    std::string password;       // empty: six random digits
    bool demo = false;          // the demo grocery's rows instead of an empty shop
};

// Creates the shop as make_place does and prints on tool.out who may sign in.
void make_shop(const NewShop& wanted, Tool& tool);

}  // namespace admin
