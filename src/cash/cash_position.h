// The cash that every drawer of a store must hold at a moment, computed from all movements, and its transfer
// to the main drawer. Two procedures with differing sums: the store-wide one and calc_cash of the shift
// screens.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cash/cash_terms.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

struct DrawerPosition {
    std::int64_t drawer = 0;
    std::string name;
    double position = 0;    // built from sums rounded to two decimals
    float card_sales = 0;   // of the period, less card returns; not part of the position
    float uncollected = 0;  // telephone orders of the period not yet collected; not part of the position
    double discounts = 0;   // invoice_discounts of the period
    double moved = 0;       // transferred to the main drawer by this computation
};

// The invoice discounts on a drawer's cash sales from `start` on and strictly before `until`, less those on
// returns. The position counts these invoices before their discount, so a right count is this much short of
// it.
double invoice_discounts(database::Connection& connection, const Drawer& drawer, const common::Moment& start,
                         const common::Moment& until);

// The store-wide computation.
class CashPosition {
  public:
    CashPosition(database::Connection& connection, const signin::Session& session, common::Clock& clock)
        : connection_(connection), session_(session), clock_(clock) {}

    // Computes the position of each drawer of the store from the movements strictly before `until`, and the
    // figures of the period after `start` up to and including `until`. Writes nothing.
    void compute(std::int64_t store, const common::Moment& start, const common::Moment& until) {
        compute(store, start, until, until);
    }
    // The same for a whole day: its position reaches to the next midnight, its figures to its last second,
    // for what is written at midnight is the next day's.
    void compute(std::int64_t store, const common::Moment& start, const common::Moment& until,
                 const common::Moment& end_of_period);

    // Moves to the main drawer what was computed above zero, less `leave`, which stays in the drawer;
    // `drawer` 0 empties every drawer, any other only that one. See move_cash for what is never moved.
    void move(float leave, std::int64_t drawer);

    const std::vector<DrawerPosition>& drawers() const { return drawers_; }
    // The workstation's own drawer; zeros when the store has no such drawer.
    const DrawerPosition& own() const { return own_; }

  private:
    database::Connection& connection_;
    const signin::Session& session_;
    common::Clock& clock_;
    std::int64_t store_ = 0;
    common::Moment until_;
    std::vector<DrawerPosition> drawers_;
    DrawerPosition own_;
};

// Which shift screen's copy of calc_cash: that of shift2s, that of shiftc.
enum class CalcCopy { shift_close, shift_start };

// Computes every drawer of the session's store up to the start of its newest shift, moves what is above zero
// to the main drawer, and tells the cashier of each drawer whose cash is zero or less. The session's own
// drawer keeps `leave`; the others are emptied. Without any shift it does nothing.
std::vector<DrawerPosition> calc_cash(database::Connection& connection, const signin::Session& session,
                                      const common::Services& services, CalcCopy copy, double leave);

}  // namespace cash
