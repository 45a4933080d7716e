// Which machine runs which cash point of a shop on a server. Each has a row of till_running with a moment
// that its till renews.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "database/connection.h"

namespace startup {

class RunningTill {
  public:
    // A till that was switched off without leaving keeps its cash point for this long. Only a start in the
    // same place gets it sooner.
    static constexpr int seconds_until_free = 180;
    // Its till renews the claim this often.
    static constexpr int seconds_between_claims = 60;

    // `place` is machine and folder, as shown to other tills.
    RunningTill(std::int64_t cash_point, std::string place)
        : cash_point_(cash_point), place_(std::move(place)) {}

    // Claims the cash point, or renews the claim. Returns the place of the till that has it; nothing if this
    // one has it, or if the shop has no such table.
    std::optional<std::string> claim(database::Connection& connection) const;
    // Releases the cash point.
    void leave(database::Connection& connection) const;

  private:
    std::int64_t cash_point_;
    std::string place_;
};

}  // namespace startup
