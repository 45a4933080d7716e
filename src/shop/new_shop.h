// Creates a new shop: base schema, settings, store, drawer, worker, administrator, and the program's files.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "common/date_time.h"
#include "shop/place.h"

namespace shop {

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

// Who may sign in to a new shop.
struct Person {
    std::string name;
    std::string password;
};

// Creates the shop as make_place does and returns its users. The demo's rows are dated by `now`.
std::vector<Person> make_shop(const NewShop& wanted, const common::Moment& now,
                              const std::function<std::filesystem::path()>& keep_password = {});

}  // namespace shop
