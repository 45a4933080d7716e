// Rights: the actions that a user's permission string guards, and the one test for them.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "common/prompts.h"
#include "signin/session.h"

namespace signin {

enum class Action {
    return_kind,
    sell_below_stock,
    reprint,
    open_drawer,
    item_info,
    edit_price,
    edit_tiles,  // by the permission of edit_price
    daily_statement,
    edit_discount,
    sell_reserved,
    discount_above_ceiling,
    choose_port,
    // In the office.
    edit_goods,
    receive_goods,
    count_stock,
    edit_lists,
    edit_users,
    see_reports,
    see_cost,
};

// A position of the permission string. An action with several positions is allowed by any one of them; a
// position that is not listed guards nothing.
struct Permission {
    Action action;
    int position;              // counted from 1
    std::string_view name;     // for an administrator to type: "edit_price"
    std::string_view meaning;  // for an administrator to read
};

std::span<const Permission> guarded_actions();

// The action's name in the journal and on the approval sheet.
std::string_view caption_of(Action action);

// What a user without the permission is told: "you are not authorised to use this item".
inline constexpr std::string_view denied = "غير مصرح باستخدام هذا البند";

// The permission string of a row of users, one byte for each character, so that positions count characters.
std::string permissions_of(const database::Row& user);

// Returns true if the permission string, or the signed-in user, may perform the action.
bool allows(std::string_view permissions, Action action);
bool allows(const Session& session, Action action);
// Returns true if the permission string lets its user into the office.
bool allows_office(std::string_view permissions);

// Whether an action may go on: by the user's own right, or because a supervisor allowed it this time.
struct Permit {
    bool is_given = false;
    std::optional<audit::Person> approver = {};
    operator bool() const { return is_given; }
};

// The permit of an action. Without the right, `refusal` is shown, a supervisor may allow the action, and the
// till's journal records either. `about` tells the supervisor and the journal what the action was to do; its
// kind does not count. It is called where the guarded effect happens; a screen may also call it earlier, so
// that nobody types what will be refused.
Permit authorise(const Session& session, common::Prompts& prompts, Action action,
                 std::string_view refusal = denied, common::Icon icon = common::Icon::critical,
                 audit::Event about = {});

// The same for an action that changes the shop in the office: refused in any case if another program keeps
// the shop's tables (the setting `office_read_only`).
Permit authorise_change(const Session& session, common::Prompts& prompts, Action action);

}  // namespace signin
