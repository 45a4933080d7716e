// What this till has not finished saving: invoices, vouchers and shift changes.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>
#include <vector>

#include "cash/shift_report.h"
#include "common/services.h"
#include "database/unfinished.h"
#include "printing/receipt_printer.h"
#include "sales/invoice_text.h"
#include "signin/session.h"

namespace sales {

// The journal's entry of an invoice that the till of a store saves.
database::JournalEntry entry_of(const InvoiceToSave& save, std::int64_t till_store);
// The invoice of an entry; nothing if it is of another kind or cannot be read.
std::optional<Invoice> invoice_of(const database::JournalEntry& entry);
// The draft that the invoice of an entry was; none for another kind.
DraftMark draft_of(const database::JournalEntry& entry);
// Notes in the journal, together with the first step, that the printing of the receipt has ended. After a
// crash between the two nobody knows whether it came out.
void note_receipt(database::Journal& journal);

// How a kind of save is finished and undone; null for a kind that this program does not know.
const database::Resumption* resumption_of(std::string_view kind);

// Asks the cashier about each unfinished save of this till, and does what he says.
class UnfinishedSaves {
  public:
    UnfinishedSaves(database::Connection& connection, const signin::Session& session,
                    const common::Services& services, printing::ReceiptPrinter& printer)
        : connection_(connection), session_(session), services_(services), printer_(printer) {}

    struct Outcome {
        std::int64_t id = 0;
        database::Settled settled = database::Settled::left;
        std::optional<cash::ShiftReport> report;  // to be printed, of a shift change that was finished
    };
    // All of them, the oldest first.
    std::vector<Outcome> settle_all();
    // Settles one save. Its entry gets another number if its own was taken. `cause` is the error that has
    // just stopped it, or null.
    database::Settled settle(database::JournalEntry& entry, database::Paper paper,
                             const std::exception* cause);

  private:
    database::Paper paper_of(const database::JournalEntry& entry);
    void print(const database::JournalEntry& entry);

    database::Connection& connection_;
    const signin::Session& session_;
    const common::Services& services_;
    printing::ReceiptPrinter& printer_;
};

}  // namespace sales
