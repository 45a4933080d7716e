// What a supervisor allowed on a line or an invoice beyond the cashier's rights. An approval covers only what
// was done with it, until the invoice is saved or given up.
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
    // What it was used for: the price, the discount, the quantity below stock, or the percent of an invoice's
    // discount. Nothing until it is used.
    std::optional<double> value = {};
    std::optional<double> most = {};  // up to this quantity or invoice total; none for no limit

    bool operator==(const Approval&) const = default;
};
using Approvals = std::vector<Approval>;

// The approval of an action; null if there is none.
inline const Approval* approval_of(const Approvals& approvals, signin::Action action) {
    const auto found = std::ranges::find(approvals, action, &Approval::action);
    return found == approvals.end() ? nullptr : &*found;
}
// Adds an approval in place of an earlier one for the same action.
inline void approve(Approvals& approvals, Approval approval) {
    std::erase_if(approvals, [&](const Approval& old) { return old.action == approval.action; });
    approvals.push_back(std::move(approval));
}
// Records what an approval was used for, if there is one that is unused.
inline void use_approval(Approvals& approvals, signin::Action action, double value,
                         std::optional<double> most) {
    const auto found = std::ranges::find(approvals, action, &Approval::action);
    if (found == approvals.end() || found->value) return;
    found->value = value;
    found->most = most;
}
// Drops the approvals that were not used.
inline void drop_unused(Approvals& approvals) {
    std::erase_if(approvals, [](const Approval& approval) { return !approval.value; });
}
inline std::optional<audit::Person> approver_of(const Approvals& approvals, signin::Action action) {
    const Approval* approval = approval_of(approvals, action);
    return approval == nullptr ? std::nullopt : std::optional(approval->approver);
}

}  // namespace sales
