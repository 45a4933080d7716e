// The change of a shift: its form, and the logic of the shift screens. shift2s starts and closes shifts,
// shiftc only starts them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cash/cash_position.h"
#include "cash/shift.h"
#include "common/choice.h"
#include "common/form.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

struct ShiftEntry {
    std::optional<std::int64_t> worker;
    common::Date date;
    std::string time;              // "HH:mm:ss"
    std::string counted = "0.00";  // the cash counted in the drawer
    std::string leave = "0.00";    // the cash that stays in the drawer, as change for the next shift
};
common::FormTable<ShiftEntry> shift_form();

// shiftc, and what both screens share.
class ShiftStart {
  public:
    ShiftStart(database::Connection& connection, const signin::Session& session, common::Services services)
        : ShiftStart(connection, session, services, CalcCopy::shift_start) {}

    // Reads the workers, the settings, the drawer's last shift and the next number; the entry becomes one of
    // this moment. Refused if the workstation's drawer does not exist.
    std::optional<common::Refusal> open();

    // Starts a shift by the entry, closing the one before if it is open, and opens the form afresh. Writes
    // nothing if it is refused, except when another workstation starts the same shift at this very moment:
    // then only the one before is closed.
    std::optional<common::Refusal> start();

    ShiftEntry entry;

    const std::vector<common::Choice>& workers() const { return workers_; }
    std::int64_t next_number() const { return next_number_; }
    const std::optional<Shift>& last_shift() const { return last_; }
    bool is_in_shift() const { return last_ && last_->is_open(); }
    // Who has the last shift.
    const std::string& last_worker() const { return last_worker_; }
    // Invoice discounts of the open shift, by which a right count is short of the expected cash; 0 between
    // shifts.
    common::Amount discounts() const { return discounts_; }

    // The report of the shift that the last action closed, if the settings want it printed.
    const std::optional<ShiftReport>& report() const { return report_; }

  protected:
    using Refused = std::optional<common::Refusal>;
    struct Amounts {
        common::Amount counted;
        common::Amount leave;
    };

    ShiftStart(database::Connection& connection, const signin::Session& session, common::Services services,
               CalcCopy copy)
        : connection_(connection), session_(session), services_(services), copy_(copy) {}

    void read_last_shift(database::Fragment order = by_number_at_start);
    Refused read_amounts(Amounts& amounts) const;
    Refused check_drawer() const;
    // Refuses to close the open shift at a moment with these amounts.
    Refused check_close(const common::Moment& at, const Amounts& amounts) const;
    void close_shift(const common::Moment& at, const Amounts& amounts);
    void finish();

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    std::optional<Shift> last_;
    std::optional<ShiftReport> report_;

  private:
    Refused read_moment(common::Moment& at) const;
    bool add_shift(const common::Moment& at);

    CalcCopy copy_;
    bool must_count_ = false;     // clos_bal
    bool prints_report_ = false;  // prn_csh_rep
    std::vector<common::Choice> workers_;
    std::string last_worker_;
    std::int64_t next_number_ = 1;
    common::Amount discounts_;
};

// shift2s.
class ShiftChange : public ShiftStart {
  public:
    ShiftChange(database::Connection& connection, const signin::Session& session, common::Services services)
        : ShiftStart(connection, session, services, CalcCopy::shift_close) {}

    // Asks whether the current shift is to be closed.
    bool confirm_close() const;
    // Closes the open shift now without starting another, whatever worker, date and time the entry names.
    // Writes nothing if it is refused.
    std::optional<common::Refusal> close_current();
};

}  // namespace cash
