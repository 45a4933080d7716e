// The lists that the sales desk fills when it opens: stores, users, banks, customers, receivers, salesmen.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "database/choices.h"
#include "database/reads.h"
#include "signin/session.h"

namespace sales {

// The code of the entry "الكل" (all) that ends the user filter.
inline constexpr std::int64_t all_users = 0;
inline constexpr std::string_view all_users_name = "الكل";

struct Lists {
    std::vector<common::Choice> stores;
    std::vector<common::Choice> users;
    std::vector<common::Choice> user_filter;  // the users and "الكل"
    std::vector<common::Choice> banks;        // those that are not mobile wallets; the first is preselected
    std::vector<common::Choice> account_customers;
    std::vector<common::Choice> tips_receivers;
    std::vector<common::Choice> workers;
    std::vector<common::Choice> item_types;  // empty if the shop keeps no names for them
    std::vector<common::Choice> makers;
};
// Asks for all of them.
void ask_lists(database::Reads& reads, Lists& lists);
// The group shown for an item type: its name, else its number, nothing for 0.
std::string group_name(const Lists& lists, std::int64_t item_type);
// Asks for account customers and tips receivers, also again after one was added on its own screen.
void ask_parties(database::Reads& reads, Lists& lists);

// The name of an account customer; empty if he was deleted.
std::string account_name(database::Connection& connection, std::int64_t code);

// One line of the shift grid.
struct ShiftRow {
    std::int64_t number = 0;
    std::string start;
    std::string end;  // empty while the shift is open
};
// The shifts of the workstation's drawer, in order of their numbers.
void ask_shifts(database::Reads& reads, const signin::Session& session, std::vector<ShiftRow>& shifts);

// The numbers of the shifts of the workstation's drawer under which the user saved invoices.
std::set<std::int64_t> shifts_of_user(database::Connection& connection, const signin::Session& session,
                                      std::int64_t user);

// The lines of the news ticker.
void ask_news(database::Reads& reads, std::vector<std::string>& news);

}  // namespace sales
