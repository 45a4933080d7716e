// Saving an invoice: the checks, the receipt, and every row in its fixed order.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>

#include "common/prompts.h"
#include "common/services.h"
#include "database/journal.h"
#include "printing/receipt_printer.h"
#include "sales/claim.h"
#include "sales/invoice_rows.h"
#include "signin/session.h"

namespace sales {

enum class SaveOutcome {
    saved,         // every row is written and durable
    refused,       // a check failed, or an error came before the first row of the invoice: nothing is written
    partly_saved,  // an error came later, or may have: what was written stays until it is finished or undone
};

// An invoice that was saved in part.
struct PartlySaved {
    SaveStep finished = SaveStep::none;  // the last step
    std::int64_t journal_id = 0;         // by which it can be finished or undone; 0 if it cannot
};

// Runs the checks in their order and shows the message of the first that fails. Returns the number of the
// drawer's open shift if all pass. With `claims` number and goods are claimed if all pass, else it only
// reads.
std::optional<std::int64_t> check_before_saving(database::Connection& connection,
                                                const signin::Session& session, common::Prompts& prompts,
                                                const Invoice& invoice, Claims* claims = nullptr);

class Saving {
  public:
    Saving(database::Connection& connection, const signin::Session& session, common::Services services,
           printing::ReceiptPrinter& printer)
        : connection_(connection),
          session_(session),
          services_(services),
          printer_(printer),
          claims_(connection) {}

    // Saves the invoice under the next number of its series, which is left in `invoice`, and shows the
    // message if there is one. After an error the cashier chooses whether to finish or undo what was begun.
    // After `saved` everything is durable, so the drawer may open.
    SaveOutcome save(Invoice& invoice, const PaymentTaken& payment);
    // How far the last save came, if it stopped part-way.
    const PartlySaved& left() const { return left_; }

  private:
    void log_begin(const Invoice& invoice);
    void print(InvoiceToSave& save);
    void record(const InvoiceToSave& save);
    void take_another_number(Invoice& invoice);
    void write(const InvoiceToSave& save);
    void note_goods_sold_elsewhere(const Invoice& invoice, const Line* line);
    SaveOutcome stopped(Invoice& invoice, const std::exception& error);
    SaveOutcome settle_at_once(Invoice& invoice, const std::exception& error);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    printing::ReceiptPrinter& printer_;
    Claims claims_;

    database::Journal journal_{connection_};  // of the running save
    database::JournalEntry entry_;
    PartlySaved left_;
    bool may_have_printed_ = false;
    std::string sold_elsewhere_;  // the item whose goods were gone once the receipt was printed
    bool is_running_ = false;
};

}  // namespace sales
