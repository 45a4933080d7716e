// The cash that every drawer of a store must hold at a moment, computed from all movements, and its transfer
// to the main drawer. Two procedures with different sums: the store-wide one and calc_cash of the shift
// screens.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cash/cash_sums.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

// The discounts on a period's cash invoices, those on returns subtracted.
struct InvoiceDiscounts {
    // The discounts already taken off the position; nothing in a shop without the day net_from.
    std::optional<common::Amount> taken_off;
    // The discounts that the position still contains: a correct count falls short of it by this much.
    common::Amount beside;
};

struct DrawerPosition {
    std::int64_t drawer = 0;
    std::string name;
    common::Amount position;     // built from sums rounded to two decimals
    common::Amount card_sales;   // of the period, less card returns; not part of the position
    common::Amount uncollected;  // telephone orders of the period that have not been paid; likewise
    InvoiceDiscounts discounts;  // of the period
    common::Amount moved;        // what move() has transferred to the main drawer
};

// The discounts on a drawer's cash invoices from `start` on and strictly before `until`.
void ask_discounts(database::Reads& reads, const Drawer& drawer, const common::Moment& start,
                   const common::Moment& until, const std::optional<common::Date>& net_from,
                   InvoiceDiscounts& discounts);

// A transfer of cash to the main drawer.
struct CashTransfer {
    Drawer from;
    Drawer to;
    common::Amount amount;
    std::string note;
    std::int64_t user = 0;
    common::Moment at;
};
// Inserts it under the next number and returns that number.
std::int64_t write_transfer(database::Connection& connection, const CashTransfer& transfer);
void remove_transfer(database::Connection& connection, std::int64_t number, const CashTransfer& transfer);

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
    // because an invoice of midnight belongs to the next day.
    void compute(std::int64_t store, const common::Moment& start, const common::Moment& until,
                 const common::Moment& end_of_period);

    // The transfer of what a drawer holds above zero, less `leave`, to the main drawer; nothing if there is
    // nothing to transfer. The main drawer itself is never emptied.
    std::optional<CashTransfer> transfer_from(std::int64_t drawer, common::Amount leave) const;
    // Makes this transfer from one drawer, or from all drawers if `drawer` is 0.
    void move(common::Amount leave, std::int64_t drawer);

    const std::vector<DrawerPosition>& drawers() const { return drawers_; }
    // The workstation's own drawer; zeros if the store has no such drawer.
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

// The position of one drawer from the movements strictly before `until`.
common::Amount position_at(database::Connection& connection, const Drawer& drawer,
                           const common::Moment& until);

// Which shift screen's copy of calc_cash: the one of shift2s or the one of shiftc.
enum class CalcCopy { shift_close, shift_start };

// What a copy counts in a drawer strictly before `until`.
void ask_calc_position(database::Reads& reads, CalcCopy copy, const Drawer& drawer,
                       const common::Moment& until, const std::optional<common::Date>& net_from,
                       common::Amount& position);

// Computes every drawer of the session's store up to the start of its newest shift, transfers what is above
// zero to the main drawer, and tells the cashier of each drawer whose cash is zero or less. The session's own
// drawer keeps `leave` of what it holds now. The others are emptied if the cashier agrees: it is the cash of
// colleagues, some of whom may be in their shifts. Does nothing if there is no shift.
std::vector<DrawerPosition> calc_cash(database::Connection& connection, const signin::Session& session,
                                      const common::Services& services, CalcCopy copy, common::Amount leave);

}  // namespace cash
