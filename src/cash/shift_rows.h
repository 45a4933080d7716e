// The rows of a shift change: the transfer of the drawer's cash, the end of the old shift and the new shift,
// as steps of the journal of saves.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cash/cash_position.h"
#include "cash/shift_report.h"
#include "common/amount.h"
#include "common/date_time.h"
#include "database/unfinished.h"

namespace cash {

struct ShiftEnd {
    std::int64_t number = 0;
    common::Moment at;
    common::Amount counted;
    std::optional<CashTransfer> transfer;  // nothing if no cash is to be moved
    std::optional<ShiftReport> report;  // if the shop prints it; its figures are gone once the cash is moved
};
struct ShiftBegin {
    std::int64_t number = 0;
    common::Moment at;
    std::int64_t worker = 0;
};
// Everything that the rows are made from.
struct ShiftToSave {
    Drawer drawer;
    std::optional<ShiftEnd> closed;
    std::optional<ShiftBegin> started;
};
// The entry of the journal, begun at a moment.
database::JournalEntry entry_of(const ShiftToSave& save, const common::Moment& begun);
extern const database::Resumption shift_resumption;

// The report to print once the shift change of an entry is finished; nothing if there is none.
std::optional<ShiftReport> report_to_print(const database::JournalEntry& entry);

// How the activity log names a shift change; the name ends with ")".
std::string log_name(const ShiftToSave& save);

class ShiftRows {
  public:
    ShiftRows(database::Connection& connection, database::Journal& journal, const ShiftToSave& save)
        : connection_(connection), journal_(journal), save_(save) {}

    // Does the steps that the journal does not know as done. Returns false if another workstation with this
    // drawer's number wrote the same shift at the same moment. This one then deletes its row again, because
    // one worker is responsible for a drawer. If both delete theirs, neither shift has started, and one of
    // the two starts again. Rows that are equal in everything are the same shift and stay.
    bool write();
    // Takes back what is written, and removes the save from the journal.
    void undo();

  private:
    std::string close_shift();
    void reopen_shift(const std::string& noted);
    void add_shift();
    void remove_shift();
    bool is_started_elsewhere();
    void take_back(int step, const std::string& noted);

    database::Connection& connection_;
    database::Journal& journal_;
    const ShiftToSave& save_;
};

}  // namespace cash
