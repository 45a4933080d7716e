// The shifts of a drawer and the logic of the shift screens: shift2s starts and
// closes shifts, shiftc only starts them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cash/cash_position.h"
#include "cash/shift_report.h"
#include "cash/shift_rows.h"
#include "common/amount.h"
#include "common/choice.h"
#include "common/date_time.h"
#include "common/form.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace cash {

struct Shift {
    std::int64_t number = 0;
    std::int64_t worker = 0;
    common::Moment start;
    std::optional<common::Moment> end;  // nothing while the shift is open
    bool is_open() const { return !end.has_value(); }
};

// The drawer's last shift by its number; nothing before the first one. If two workstations have written rows
// of the same number, the shift is open as long as one of them is. Meant to be asked for with other reads.
// The statement reads one row, however many shifts there have been.
database::Sql last_shift_statement(std::int64_t store, std::int64_t drawer);
std::optional<Shift> last_shift_in(const database::Result& rows);
std::optional<Shift> current_shift(database::Connection& connection, std::int64_t store, std::int64_t drawer);

struct ShiftEntry {
    std::optional<std::int64_t> worker;
    common::Date date;
    std::string time;            // "HH:mm:ss"
    std::string counted;         // the cash counted in the drawer; blank if it was not counted
    std::string leave = "0.00";  // the cash that stays in the drawer, as change for the next shift
    // What `counted` is made of, if it was counted by notes and coins and not changed since.
    std::optional<DrawerCount> pieces = {};
};
common::FormTable<ShiftEntry> shift_form();

// shiftc, and what both screens share.
class ShiftStart {
  public:
    ShiftStart(database::Connection& connection, const signin::Session& session, common::Services services)
        : ShiftStart(connection, session, services, CalcCopy::shift_start) {}

    // Reads the workers, the settings, the drawer's last shift and the next number; the entry becomes one of
    // this moment. Between shifts it proposes to leave the cash that is in the drawer, so that only what
    // somebody decides to hand in is moved. Refused if the workstation's drawer does not exist.
    std::optional<common::Refusal> open();

    // Starts a shift according to the entry, closes the one before if it is open, and opens the form afresh.
    // Writes nothing if it is refused, except if another workstation starts the same shift at that very
    // moment: then only the one before is closed.
    std::optional<common::Refusal> start();

    ShiftEntry entry;

    const std::vector<common::Choice>& workers() const { return workers_; }
    std::int64_t next_number() const { return next_number_; }
    const std::optional<Shift>& last_shift() const { return last_; }
    bool is_in_shift() const { return last_ && last_->is_open(); }
    // The worker of the last shift.
    const std::string& last_worker() const { return last_worker_; }
    // Invoice discounts of the open shift; 0 between shifts.
    const InvoiceDiscounts& discounts() const { return discounts_; }

    // The report of the shift that the last action closed, or finished closing, if the settings want it
    // printed.
    const std::optional<ShiftReport>& report() const { return report_; }

  protected:
    using Refused = std::optional<common::Refusal>;
    struct Amounts {
        std::optional<common::Amount> counted;
        common::Amount leave;
    };

    ShiftStart(database::Connection& connection, const signin::Session& session, common::Services services,
               CalcCopy copy)
        : connection_(connection), session_(session), services_(services), copy_(copy) {}

    Drawer own_drawer() const { return {session_.store_code, session_.cash_point}; }
    // Reads the last shift with its worker, the next number, and the existing drawers.
    void read_last_shift();
    void ask_last_shift(database::Reads& reads);
    void ask_worker(database::Reads& reads);
    Refused read_amounts(Amounts& amounts) const;
    Refused check_drawer() const;
    // Refuses to close the open shift at a moment with these amounts.
    Refused check_close(const common::Moment& at, const Amounts& amounts) const;
    // Plans the end of the open shift, and makes its report.
    ShiftEnd plan_close(const common::Moment& at, const Amounts& amounts);
    // Asks about a shift change that this till has not finished; refused if there was one.
    Refused settle_earlier();
    // Writes the change. Refused if it stopped and was not finished, or if the shift was started elsewhere.
    Refused write(const ShiftToSave& save);
    void finish();

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    std::optional<Shift> last_;
    std::optional<ShiftReport> report_;
    ShiftReport closing_;  // of the shift that is being closed

  private:
    Refused read_moment(common::Moment& at) const;
    void note(const ShiftToSave& save) const;
    Refused stopped(database::JournalEntry& unfinished, const ShiftToSave& save, const std::exception& error);

    CalcCopy copy_;
    bool must_count_ = false;     // clos_bal
    bool prints_report_ = false;  // prn_csh_rep
    std::vector<common::Choice> workers_, drawers_;
    std::string last_worker_;
    std::int64_t next_number_ = 1;
    InvoiceDiscounts discounts_;
};

// shift2s.
class ShiftChange : public ShiftStart {
  public:
    ShiftChange(database::Connection& connection, const signin::Session& session, common::Services services)
        : ShiftStart(connection, session, services, CalcCopy::shift_close) {}

    // Asks whether to close the current shift. `also` is what the cashier should know before he answers.
    bool confirm_close(std::string_view also = {}) const;
    // Closes the open shift now without starting another, whatever worker, date and time the entry names.
    // Writes nothing if it is refused.
    std::optional<common::Refusal> close_current();
};

}  // namespace cash
