// What a supervisor allowed on a line or an invoice beyond the cashier's rights. It holds for what was done
// by it and for nothing more, until the invoice is saved or given up.
#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "audit/event.h"
#include "signin/permissions.h"

namespace sales {

struct Approval {
    signin::Action action{};
    audit::Person approver;
    // What was done by it: the price, the discount, the quantity below stock, the percent of an invoice's
    // discount; nothing as long as nothing was.
    std::optional<double> value = {};
    std::optional<double> most = {};  // for this quantity at most, or total of the invoice; none for any

    bool operator==(const Approval&) const = default;
};
using Approvals = std::vector<Approval>;

// The approval of an action; null without one.
inline const Approval* approval_of(const Approvals& approvals, signin::Action action) {
    const auto found = std::ranges::find(approvals, action, &Approval::action);
    return found == approvals.end() ? nullptr : &*found;
}
// Puts an approval in the place of an earlier one of the same action.
inline void approve(Approvals& approvals, Approval approval) {
    std::erase_if(approvals, [&](const Approval& old) { return old.action == approval.action; });
    approvals.push_back(std::move(approval));
}
// Keeps what was done by an approval, if there is one that nothing was done by yet.
inline void use_approval(Approvals& approvals, signin::Action action, double value,
                         std::optional<double> most) {
    const auto found = std::ranges::find(approvals, action, &Approval::action);
    if (found == approvals.end() || found->value) return;
    found->value = value;
    found->most = most;
}
// Ends the approvals that nothing was done by.
inline void drop_unused(Approvals& approvals) {
    std::erase_if(approvals, [](const Approval& approval) { return !approval.value; });
}
inline std::optional<audit::Person> approver_of(const Approvals& approvals, signin::Action action) {
    const Approval* approval = approval_of(approvals, action);
    return approval == nullptr ? std::nullopt : std::optional(approval->approver);
}

}  // namespace sales
