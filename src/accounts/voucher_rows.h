// The rows of a voucher: written step by step, and taken back.
#pragma once

#include <string>

#include "accounts/voucher_saving.h"
#include "database/journal.h"

namespace accounts {

// Writes the row of a new voucher under an internal number.
void insert_voucher(database::Connection& connection, const VoucherRecord& record, std::int64_t id);

class VoucherRows {
  public:
    VoucherRows(database::Connection& connection, database::Journal& journal, const VoucherToSave& save)
        : connection_(connection), journal_(journal), save_(save), id_(save.id) {}

    // Does the steps that the journal does not know as done.
    void write();
    // Takes back what is written, and removes the save from the journal.
    void undo();
    VoucherStep finished() const { return finished_; }
    // The voucher's internal number after write(). It differs from the planned one if another till took that.
    std::int64_t id() const { return id_; }
    // The party's balance after write().
    common::Amount balance() const { return balance_; }

  private:
    std::string add_row();
    std::string rewrite_row();
    std::string move_party();
    void take_back(VoucherStep step, const std::string& noted);
    void restore_row(const std::string& noted);

    database::Connection& connection_;
    database::Journal& journal_;
    const VoucherToSave& save_;
    std::int64_t id_;
    VoucherStep finished_ = VoucherStep::none;
    common::Amount balance_;
};

}  // namespace accounts
