// What the program keeps for the whole run: the workstation, the signed-in user, the settings.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "audit/trail.h"
#include "common/prompts.h"
#include "database/connection.h"
#include "signin/attempts.h"

namespace signin {

// The columns of the row of `basic` that sign-in keeps until sign-out.
struct Settings {
    std::string aname;  // the store's name on receipts
    std::string ename;  // its second name
    std::string tel;    // its telephone
    int warn = 0;
    int type = 0;
    std::string print;  // the receipt port at start
    std::string cash;   // the drawer's port
    std::string pname;
    float max_dis = 0;  // the discount ceiling in percent
    int cash_m = 0;
    float cash_dis = 0;
    int cash_dis_1 = 0;
    int cust_reg = 0;
    int sear_lang = 0;
    std::int64_t st_d = 0;  // this workstation's store
    std::string logo = "logo.jpg";
};

// Reads the row of `basic`. Nulls, or a missing row, give 0 and ""; an empty `logo` gives "logo.jpg".
Settings read_settings(database::Connection& connection);

// Returns true if the character at the position, counted from 1, of the permission string is "1".
inline bool has_permission(std::string_view permissions, int position) {
    return position >= 1 && static_cast<std::size_t>(position) <= permissions.size() &&
           permissions[static_cast<std::size_t>(position) - 1] == '1';
}

enum class Action;  // permissions.h

// An action that the signed-in user may not do, and what he is told.
struct Refused {
    Action action{};
    std::string_view text;
    common::Icon icon{};
    std::string what;  // the action and what it is about, as the supervisor reads it
};

// "training": what papers of a training say, and what the name of its shop begins with.
inline constexpr std::string_view training_word = "تدريب";
inline constexpr std::string_view training_prefix = "تدريب - ";

struct Session {
    // From start-up.
    std::int64_t cash_point = 0;  // this workstation's drawer
    std::string computer_name;
    std::string version;  // the program version string, trimmed
    std::array<std::string, 3> credit_lines;
    std::filesystem::path program_folder;
    std::filesystem::path working_folder;
    bool is_training = false;  // on a copy of the shop (startup/training.h)
    bool is_office = false;    // of the office, which has no drawer
    std::string shop;          // its file, or its server and database: tells the shops of this machine apart

    // From sign-in.
    std::int64_t user_code = 0;
    std::string user_name;
    std::string permissions;  // one character per guarded action, "1" = allowed
    std::int64_t store_code = 0;
    std::string store_name;
    std::string drawer_name;
    Settings settings;
    Attempts attempts;          // at signing in and at changing the password
    bool is_read_only = false;  // the office changes nothing, because another program keeps the tables

    // Shows a refusal and returns the supervisor who allows the action after all. Without it a refusal is a
    // message.
    std::function<std::optional<audit::Person>(const Refused&)> ask_supervisor;

    // The till's journal. Copies of a session share it.
    std::shared_ptr<audit::Trail> trail = std::make_shared<audit::Trail>();
    // Notes an event of the signed-in user in the journal, without asking the database.
    void note(const audit::Event& event) const { trail->note(event, {user_code, user_name}, store_code); }

    bool has_permission(int position) const { return signin::has_permission(permissions, position); }
};

}  // namespace signin
