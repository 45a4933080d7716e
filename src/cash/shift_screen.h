// The logic of the shift screens: shift2s starts and closes shifts, shiftc only starts them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cash/cash_position.h"
#include "cash/current_shift.h"
#include "cash/lists.h"
#include "cash/shift_report.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

// shiftc, and what both screens share. A face fills the fields, calls an action and repaints.
class ShiftStartScreen {
  public:
    ShiftStartScreen(database::Connection& connection, const signin::Session& session,
                     common::Services services)
        : ShiftStartScreen(connection, session, services, CalcCopy::shift_start) {}

    // Reads the workers, the settings, the drawer's last shift and the next number; date and time become now,
    // the amounts "0.00". False with a message when the workstation's drawer does not exist.
    bool open();

    // Starts a shift for `worker` at the date and time of the screen, closing the one before if it is open.
    // True when it was started; then the screen has been opened afresh. Otherwise a message was shown and,
    // but for a database error (which is thrown), nothing was written.
    bool start();

    // The field that the last refusal is about. A wrong date or time stops a start, but not a close, which is
    // always of this moment.
    enum class Field { none, worker, time, counted, leave };
    Field refused_field() const { return refused_field_; }

    // Fields.
    std::optional<std::int64_t> worker;
    common::Date date;
    std::string time;              // "HH:mm:ss"
    std::string counted = "0.00";  // the cash counted in the drawer
    std::string leave = "0.00";    // the cash that stays in the drawer, as change for the next shift

    const std::vector<common::Choice>& workers() const { return workers_; }
    std::int64_t next_number() const { return next_number_; }
    const std::optional<Shift>& last_shift() const { return last_; }
    bool is_in_shift() const { return last_ && last_->is_open(); }
    // Who has the last shift.
    const std::string& last_worker() const { return last_worker_; }
    // Invoice discounts of the open shift, by which a right count is short of the expected cash; 0 between
    // shifts.
    common::Amount discounts() const { return discounts_; }
    bool counted_cash_needed() const { return clos_bal_ == 1; }

    // The report of the shift that the last action closed, when the settings want it printed.
    const std::optional<ShiftReport>& report() const { return report_; }

  protected:
    ShiftStartScreen(database::Connection& connection, const signin::Session& session,
                     common::Services services, CalcCopy copy)
        : connection_(connection), session_(session), services_(services), copy_(copy) {}

    struct Amounts {
        common::Amount counted;
        common::Amount leave;
    };
    void read_last_shift(database::Fragment order = by_number_at_start);
    std::optional<Amounts> read_amounts();
    bool has_drawer();
    bool refuse(std::string_view text, Field field = Field::none);
    // Whether the open shift may be closed at a moment with these amounts; says why not.
    bool may_close(const Shift& shift, const common::Moment& at, const Amounts& amounts);
    void close_shift(const Shift& shift, const common::Moment& at, const Amounts& amounts);
    bool add_shift(const common::Moment& at);
    void finish();

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    CalcCopy copy_;
    Field refused_field_ = Field::none;
    int clos_bal_ = 0;
    int prn_csh_rep_ = 0;
    std::vector<common::Choice> workers_;
    std::optional<Shift> last_;
    std::string last_worker_;
    std::int64_t next_number_ = 1;
    common::Amount discounts_;
    std::optional<ShiftReport> report_;
};

// shift2s.
class ShiftScreen : public ShiftStartScreen {
  public:
    ShiftScreen(database::Connection& connection, const signin::Session& session, common::Services services)
        : ShiftStartScreen(connection, session, services, CalcCopy::shift_close) {}

    // Asks, then closes the open shift now without starting another. True when it was closed.
    bool close_current();
};

}  // namespace cash
