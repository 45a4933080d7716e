// Creates a new shop: base schema, settings, store, drawer, worker, administrator, and the program's files.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "common/amount.h"
#include "common/date_time.h"
#include "shop/place.h"

namespace shop {

struct NewDrawer {
    std::string name;
    common::Amount opening = {};  // the cash that lies in it
};

// Who may sign in to a new shop.
struct Person {
    std::string name;
    std::string password;
};

struct NewShop {
    std::filesystem::path folder;  // for the files; created if missing
    Place place = new_place;       // where the database goes
    std::string name;              // on receipts; empty: a neutral one, or the demo shop's
    std::string second_name;       // below the name: an address, or the name in another language
    std::string telephone;
    std::string store = "الفرع الرئيسي";
    std::vector<NewDrawer> drawers = {{"درج 1"}};  // numbered from 1: one for each cash point
    std::string printer_port = "win";
    std::string drawer_port = "com1";
    std::string administrator;          // the first user's name; empty: a neutral one
    std::string password;               // empty: six random digits
    std::vector<Person> cashiers = {};  // may only do what selling needs
    bool demo = false;                  // the demo grocery's rows instead of an empty shop
    // Writes further rows that the shop begins with.
    std::function<void(database::Connection&)> add = {};
};

// What a cashier may do besides selling: print a receipt again and see an item's prices.
inline constexpr std::string_view cashier_actions = "reprint+item_info";

// Refused if a port is neither a device nor a receipt file: its tills would refuse it.
void refuse_port(const std::string& port, const std::filesystem::path& folder);

// Creates the shop as make_place does and returns its users. The demo's rows are dated by `now`.
std::vector<Person> make_shop(const NewShop& wanted, const common::Moment& now,
                              const std::function<std::filesystem::path()>& keep_password = {});

}  // namespace shop
