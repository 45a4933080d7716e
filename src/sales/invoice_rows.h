// The rows of an invoice: written step by step in their fixed order, and taken back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/journal.h"
#include "sales/draft.h"
#include "sales/invoice_text.h"
#include "sales/stock_movement.h"

namespace sales {

// The steps of a save that write or print, in their order; the log names the last one that finished.
enum class SaveStep {
    none = 0,
    receipt = 10,
    account_balance = 20,
    header = 30,
    bank = 40,
    lines = 50,
    transfers = 60,  // of lines supplied from another store, just before the sale's own stock movement
    stock = 70,
    craftsman_lines = 80,
    reservations = 90,
};
// The number of a step in the journal. Each line supplied from another store is a step of its own, numbered
// from the step of the transfers on.
int step_number(SaveStep step);
SaveStep step_of_number(int number);
// The step's name in Arabic, for the cashier and the log.
std::string_view name_of(SaveStep step);

class InvoiceRows {
  public:
    InvoiceRows(database::Connection& connection, database::Journal& journal, const InvoiceToSave& save);

    // The first line of a sale whose goods are no longer there; null if all are.
    const Line* first_short_line();
    // Writes the rows of every step that the journal does not know as done, and removes the save from the
    // journal together with `at_end`. On a server most saves are one round trip.
    void write(const std::vector<database::Command>& at_end);
    // Takes back what is written, and removes the save from the journal.
    void undo();
    // The last step that write() has passed; printing before it began.
    SaveStep finished() const { return finished_; }

  private:
    using Commands = std::vector<database::Command>;

    InvoiceIdentity identity() const { return {key_of(invoice_), save_.moment.time}; }
    bool is_to_do(SaveStep step, bool applies) const;
    void try_to_write(const Commands& at_end);
    // Plans the commands of a step, to be done with those planned before.
    void plan(SaveStep step, Commands commands, std::string noted = {});
    // Carries out the planned steps, of which `last` is the last one.
    template <typename Run>
    void do_planned(SaveStep last, const Run& run);
    void do_planned(SaveStep last);
    Commands move_account_balance(bool back) const;
    Commands header();
    void remove_header();
    void plan_bank_row();
    void remove_bank_row(std::int64_t number);
    Commands lines();
    void fetch_from_other_stores();
    void plan_stock();
    StockPlan stock_movement();
    Commands move_craftsman_lines(bool back) const;
    database::Sql reservations() const;
    std::string take_off_reservations();
    void reserve_again(std::string_view noted);
    void take_back(int step, const std::string& noted);

    database::Connection& connection_;
    database::Journal& journal_;
    const InvoiceToSave& save_;
    const Invoice& invoice_;
    StockBatches batches_;
    std::vector<database::PlannedStep> planned_;
    SaveStep finished_ = SaveStep::receipt;
};

// The note of the bank row of a card payment, by which tallvex-admin check finds the row again. It begins
// with a blank.
std::string card_note(bool is_sale, std::string_view reference);

}  // namespace sales
