#include "sales/unfinished.h"

#include <fmt/format.h>

#include <algorithm>

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

bool has_header(Connection& connection, const InvoiceToSave& save) {
    const InvoiceIdentity identity{key_of(save.invoice), save.moment.time};
    return std::ranges::any_of(connection.query(database::Sql("select * from sales") + where(identity.key)),
                               [&](const database::Row& row) { return identity_of(row) == identity; });
}

// Until the header was written, another till may have taken the number. The invoice then gets a new one.
void finish_invoice(Connection& connection, JournalEntry& entry) {
    Journal journal(connection);
    journal.resume(entry.id);
    InvoiceToSave save = read_invoice_to_save(entry.content);
    // The save was complete; only the answer was lost.
    if (!database::is_unfinished(connection, entry.id) && has_header(connection, save)) return;
    Claims claims(connection, save.claim);
    if (!journal.has_done(step_number(SaveStep::header)) && claims.number_taken(save.invoice)) {
        claims.claim_number(save.invoice);
        const JournalEntry renumbered = entry_of(save, entry.store);
        journal.rewrite(renumbered);
        entry.title = renumbered.title;
        entry.content = renumbered.content;
    }
    InvoiceRows(connection, journal, save).write({});
    claims.release();
}

void undo_invoice(Connection& connection, const JournalEntry& entry) {
    Journal journal(connection);
    journal.resume(entry.id);
    const InvoiceToSave save = read_invoice_to_save(entry.content);
    InvoiceRows(connection, journal, save).undo();
    Claims(connection, save.claim).release();
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

namespace {

std::optional<InvoiceToSave> save_of(const JournalEntry& entry) {
    if (entry.kind != invoice_kind) return std::nullopt;
    try {
        return read_invoice_to_save(entry.content);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}  // namespace

std::optional<Invoice> invoice_of(const JournalEntry& entry) {
    auto save = save_of(entry);
    if (!save) return std::nullopt;
    return std::move(save->invoice);
}

DraftMark draft_of(const JournalEntry& entry) {
    const auto save = save_of(entry);
    return save ? save->draft : DraftMark();
}

void note_receipt(Journal& journal) {
    journal.note_with_next(step_number(SaveStep::receipt));
}

const database::Resumption* resumption_of(std::string_view kind) {
    for (const database::Resumption* how : resumptions)
        if (how->kind == kind) return how;
    return nullptr;
}

std::vector<UnfinishedSaves::Outcome> UnfinishedSaves::settle_all() {
    std::vector<Outcome> outcomes;
    for (JournalEntry& entry :
         database::unfinished_saves(connection_, session_.store_code, session_.cash_point)) {
        outcomes.push_back({entry.id, settle(entry, paper_of(entry), nullptr), {}});
        if (outcomes.back().settled != Settled::finished) continue;
        const auto report = cash::report_to_print(entry);
        if (report) cash::write_print_row(connection_, services_.log, *report, session_.user_name);
        outcomes.back().report = report;
    }
    return outcomes;
}

// If the program died while it was printing, nobody knows whether the receipt came out.
Paper UnfinishedSaves::paper_of(const JournalEntry& entry) {
    if (entry.kind != invoice_kind) return Paper::none;
    Journal journal(connection_);
    journal.resume(entry.id);
    return journal.has_done(step_number(SaveStep::receipt)) ? Paper::printed : Paper::unknown;
}

// A receipt that got a new number is printed under it. Its former paper is void.
Settled UnfinishedSaves::settle(JournalEntry& entry, Paper paper, const std::exception* cause) {
    const database::Resumption* how = resumption_of(entry.kind);
    if (how == nullptr) return Settled::left;
    const std::string recorded = entry.content;
    const Settled settled = database::settle(connection_, services_, entry, *how, paper, cause);
    if (settled != Settled::finished || paper == Paper::none) return settled;
    if (entry.content != recorded) {
        services_.prompts.message(std::string(message::partly_number) +
                                      std::to_string(read_invoice_to_save(recorded).invoice.number) +
                                      std::string(message::number_taken),
                                  common::Icon::exclamation);
        print(entry);
    } else if (paper == Paper::unknown && !services_.prompts.question(message::receipt_came)) {
        print(entry);
    }
    return settled;
}

void UnfinishedSaves::print(const JournalEntry& entry) {
    const InvoiceToSave save = read_invoice_to_save(entry.content);
    print_receipts(connection_.query(receipt_settings(save.invoice, true)), session_, printer_, save);
}

}  // namespace sales
