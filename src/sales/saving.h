// Saving an invoice: the checks, the receipt, and every row in its fixed order.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "cash/shift.h"
#include "common/prompts.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/journal.h"
#include "database/reads.h"
#include "printing/receipt_printer.h"
#include "sales/claim.h"
#include "sales/invoice_rows.h"
#include "sales/stock_check.h"
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

// The checks before an invoice is saved. For an ordinary sale everything they read is asked for together.
class SavingChecks {
  public:
    // With `claims`, number and goods are claimed if all checks pass; without, the checks only read.
    SavingChecks(database::Connection& connection, const signin::Session& session, common::Prompts& prompts,
                 Invoice& invoice, Claims* claims = nullptr)
        : connection_(connection), session_(session), prompts_(prompts), invoice_(invoice), claims_(claims) {}

    // Adds the reads; whoever calls runs them before run().
    void ask(database::Reads& reads);
    // Runs the checks in their order and shows the message of the first that fails. Returns the number of the
    // drawer's open shift if all pass.
    std::optional<std::int64_t> run();
    // The field of the sales window that must be filled first; "" if the last run failed for something else.
    std::string_view refused_field() const { return refused_field_; }

  private:
    std::optional<std::int64_t> refuse(std::string_view text, std::string_view field = {});
    std::nullopt_t release();
    std::optional<Shortage> find_shortage();
    std::optional<common::Refusal> missing_party() const;
    std::optional<common::Refusal> text_too_long() const;
    bool number_used() const;

    database::Connection& connection_;
    const signin::Session& session_;
    common::Prompts& prompts_;
    Invoice& invoice_;
    Claims* claims_;

    std::optional<cash::Shift> shift_;  // the drawer's last
    Goods levels_;                      // without claims
    bool has_party_ = true;
    bool has_walk_in_ = true;
    std::string_view refused_field_;
};

class Saving {
  public:
    Saving(database::Connection& connection, const signin::Session& session, common::Services services,
           printing::ReceiptPrinter& printer)
        : connection_(connection),
          session_(session),
          services_(services),
          printer_(printer),
          claims_(connection) {}

    // Saves the invoice under the next number of its series and leaves the number in `invoice`. Shows the
    // message if there is one. After an error the cashier chooses whether to finish or undo what was begun.
    // After `saved` everything is durable, so the drawer may open. The last step notes that the draft is no
    // longer in work.
    SaveOutcome save(Invoice& invoice, const PaymentTaken& payment, const DraftMark& draft = {});
    // The time that the last invoice was saved with.
    const common::TimeOfDay& time() const { return time_; }
    // How far the last save came, if it stopped part-way.
    const PartlySaved& left() const { return left_; }

  private:
    void log_begin(const Invoice& invoice);
    void print(InvoiceToSave& save, const database::Result& settings);
    void record(const InvoiceToSave& save);
    void take_another_number(Invoice& invoice);
    void write(const InvoiceToSave& save);
    void note_goods_sold_elsewhere(const Invoice& invoice, const Line* line);
    void tell_of_goods_sold_elsewhere();
    SaveOutcome stopped(Invoice& invoice, const std::exception& error);
    bool has_ended();
    SaveOutcome settle_at_once(Invoice& invoice, const std::exception& error);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    printing::ReceiptPrinter& printer_;
    Claims claims_;

    database::Journal journal_{connection_};  // of the running save
    database::JournalEntry entry_;
    PartlySaved left_;
    common::TimeOfDay time_;
    bool may_have_printed_ = false;
    std::string sold_elsewhere_;  // the item whose goods were gone once the receipt was printed
    bool is_running_ = false;
};

}  // namespace sales
