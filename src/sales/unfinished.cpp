#include "sales/unfinished.h"

#include <fmt/format.h>

#include "accounts/voucher_saving.h"
#include "cash/shift_rows.h"
#include "sales/claim.h"
#include "sales/invoice_key.h"
#include "sales/invoice_receipt.h"
#include "sales/invoice_rows.h"
#include "sales/messages.h"

namespace sales {

using database::Connection;
using database::Journal;
using database::JournalEntry;
using database::Paper;
using database::Settled;

namespace {

constexpr std::string_view invoice_kind = "invoice";

void finish_invoice(Connection& connection, const JournalEntry& entry) {
    Journal journal(connection);
    journal.resume(entry.id);
    const InvoiceToSave save = read_invoice_to_save(entry.content);
    InvoiceRows(connection, journal, save).write();
    forget_claim(connection, save.invoice);
    journal.end();
}

void undo_invoice(Connection& connection, const JournalEntry& entry) {
    Journal journal(connection);
    journal.resume(entry.id);
    const InvoiceToSave save = read_invoice_to_save(entry.content);
    InvoiceRows(connection, journal, save).undo();
    forget_claim(connection, save.invoice);
}

bool is_number_saved(Connection& connection, const Invoice& invoice) {
    return !connection
                .query(database::Sql("select pnum from sales where ") +
                       condition_of(series_of(invoice.kind, invoice.payment), invoice.store) +
                       " and pnum = " + invoice.number)
                .empty();
}

std::string log_name_of_invoice(const JournalEntry& entry) {
    return log_name(key_of(read_invoice_to_save(entry.content).invoice));
}

constexpr database::Resumption invoice_resumption = {invoice_kind, log_name_of_invoice, finish_invoice,
                                                     undo_invoice};
const database::Resumption* const resumptions[] = {&invoice_resumption, &accounts::voucher_resumption,
                                                   &cash::shift_resumption};

}  // namespace

JournalEntry entry_of(const InvoiceToSave& save, std::int64_t till_store) {
    const Invoice& invoice = save.invoice;
    return {0,
            till_store,
            save.cash_point,
            std::string(invoice_kind),
            fmt::format("البون رقم {} ({}) بمبلغ {}", invoice.number,
                        kind_caption(invoice.kind, invoice.payment), invoice.net().text()),
            save.moment,
            text_of(save)};
}

std::optional<Invoice> invoice_of(const JournalEntry& entry) {
    if (entry.kind != invoice_kind) return std::nullopt;
    return read_invoice_to_save(entry.content).invoice;
}

void note_receipt(Journal& journal) {
    if (journal.is_recorded()) journal.once(step_number(SaveStep::receipt), [] { return std::string(); });
}

const database::Resumption* resumption_of(std::string_view kind) {
    for (const database::Resumption* how : resumptions)
        if (how->kind == kind) return how;
    return nullptr;
}

std::vector<UnfinishedSaves::Outcome> UnfinishedSaves::settle_all() {
    std::vector<Outcome> outcomes;
    for (const JournalEntry& entry :
         database::unfinished_saves(connection_, session_.store_code, session_.cash_point))
        outcomes.push_back({entry.id, entry.kind == invoice_kind ? settle_invoice(entry)
                                                                 : settle(entry, Paper::none, nullptr)});
    return outcomes;
}

// An invoice that was cut off earlier. If the program died while it was printing, nobody knows whether the
// receipt came out. Another till may have saved the number since, as nothing of this one was counted yet:
// then it gets a new one, and a new receipt.
Settled UnfinishedSaves::settle_invoice(JournalEntry entry) {
    Journal journal(connection_);
    journal.resume(entry.id);
    InvoiceToSave save = read_invoice_to_save(entry.content);
    if (journal.has_done(step_number(SaveStep::header)) || !is_number_saved(connection_, save.invoice))
        return settle(entry,
                      journal.has_done(step_number(SaveStep::receipt)) ? Paper::printed : Paper::unknown,
                      nullptr);
    services_.prompts.message(std::string(message::partly_number) + std::to_string(save.invoice.number) +
                                  std::string(message::number_taken),
                              common::Icon::exclamation);
    save.invoice.number = next_invoice_number(connection_, save.invoice);
    const JournalEntry renumbered = entry_of(save, entry.store);
    entry.title = renumbered.title;
    entry.content = renumbered.content;
    journal.rewrite(entry);
    const Settled settled = settle(entry, Paper::none, nullptr);
    if (settled == Settled::finished) print(entry);
    return settled;
}

Settled UnfinishedSaves::settle(const JournalEntry& entry, Paper paper, const std::exception* cause) {
    const database::Resumption* how = resumption_of(entry.kind);
    if (how == nullptr) return Settled::left;
    const Settled settled = database::settle(connection_, services_, entry, *how, paper, cause);
    if (settled == Settled::finished && paper == Paper::unknown &&
        !services_.prompts.question(message::receipt_came))
        print(entry);
    return settled;
}

void UnfinishedSaves::print(const JournalEntry& entry) {
    print_receipts(connection_.query("select * from basic "), session_, printer_,
                   read_invoice_to_save(entry.content));
}

}  // namespace sales
