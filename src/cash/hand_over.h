// The count of a drawer whose shift is handed over: what was counted beside what is expected.
#pragma once

#include <optional>

#include "cash/difference_causes.h"
#include "cash/drawer_count.h"
#include "cash/shift.h"

namespace cash {

class HandOver {
  public:
    HandOver(database::Connection& connection, const signin::Session& session, common::Services services)
        : connection_(connection), session_(session), services_(services) {}

    // Begins the count of the workstation's drawer in its open shift.
    void open(const Shift& shift);
    const common::Denominations& denominations() const { return denominations_; }
    // What the drawer should hold; nothing before the comparison in a shop that counts blindly.
    std::optional<common::Amount> expected() const;

    DrawerCount count;

    // Computes the expected cash at this moment and what may explain the difference to the count. In a shop
    // that counts blindly the till's journal notes the comparison, because the count could be repeated to
    // fit.
    void compare();
    // Begins another count: the comparison is forgotten.
    void count_again() { compared_ = false; }
    bool is_compared() const { return compared_; }
    common::Amount difference() const { return count.total() - position_.position; }
    const std::vector<Cause>& causes() const { return causes_; }
    const DifferenceCauses& movements() const { return *movements_; }

  private:
    void compute();

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    Shift shift_;
    common::Denominations denominations_;
    bool is_blind_ = false;
    bool compared_ = false;
    DrawerPosition position_;
    std::vector<Cause> causes_;
    std::optional<DifferenceCauses> movements_;
};

}  // namespace cash
