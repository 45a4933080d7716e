// Rights: the actions that a user's permission string guards, and the one test for them.
#pragma once

#include <span>
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
    daily_statement,
    edit_discount,
    sell_reserved,
    discount_above_ceiling,
    choose_port,
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

// What the action is called in the journal and where it is approved.
std::string_view caption_of(Action action);

// What a user without the permission is told: "you are not authorised to use this item".
inline constexpr std::string_view denied = "غير مصرح باستخدام هذا البند";

// Returns true if the signed-in user may perform the action.
bool allows(const Session& session, Action action);
// The same, after showing `refusal` and noting it in the till's journal if not. `about` tells the journal
// what the action was to do; its kind does not count. Every effect that a permission guards calls it where it
// happens; a screen may call it earlier, so that nobody types what will be refused.
bool authorise(const Session& session, common::Prompts& prompts, Action action,
               std::string_view refusal = denied, common::Icon icon = common::Icon::critical,
               audit::Event about = {});

}  // namespace signin
