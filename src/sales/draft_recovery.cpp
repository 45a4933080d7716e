// What a start does with the draft that an earlier run of the till left.
#include "sales/held_invoices.h"
#include "sales/messages.h"
#include "sales/unfinished.h"

namespace sales {

using database::Result;
using database::Sql;

void HeldInvoices::ask(database::Reads& reads) {
    reads.add_optional(Sql("select top 1 id from till_held where stcode = ") + session_.store_code +
                           " and taken_cash = " + session_.cash_point,
                       [this](const Result& rows) {
                           state_.may_hold = true;
                           has_taken_ = !rows.empty();
                       });
}

void HeldInvoices::offer_draft() {
    Draft& draft = state_.draft;
    if (!draft.left() && !has_taken_) return;
    change("offer the draft", false, [&] {
        std::int64_t past = 0;
        const bool is_offered = draft.left() && is_in_work(draft.left()->mark, past);
        give_back_others(is_offered ? draft.left()->mark.held : 0);
        if (!is_offered) {
            if (draft.left()) draft.forget_left(past);
            return false;
        }
        const Draft::Left left = *draft.left();
        services_.log.log_event("draft found, lines " + std::to_string(left.invoice.invoice.lines.size()) +
                                    ", of " + left.invoice.user_name,
                                "31");
        if (const auto save = unfinished_save_of(left.mark)) {
            show_partly_saved(left.invoice, *save);
            draft.take_left();
        } else if (wants_back(left.invoice)) {
            show(left.invoice);
            draft.take_left();
        } else {
            put_aside(left.invoice, left.mark);
            draft.forget_left(past);
        }
        return true;
    });
}

// Returns false for an invoice that was saved, held or cancelled, or that is on another screen.
bool HeldInvoices::is_in_work(const DraftMark& mark, std::int64_t& past) {
    std::int64_t taken = 0;
    database::Reads reads;
    reads.add_optional(Sql("select past from till_draft where id = ") + mark.file,
                       [&](const Result& rows) { past = database::integer_of(database::first_cell(rows)); });
    if (mark.held != 0)
        reads.add_optional(
            Sql("select taken from till_held where id = ") + mark.held,
            [&](const Result& rows) { taken = database::integer_of(database::first_cell(rows)); });
    reads.run(connection_);
    return (mark.serial == 0 || mark.serial > past) && (mark.held == 0 || mark.file == taken);
}

// Gives back the held invoices that this cash point resumed in an earlier run, except `kept`.
void HeldInvoices::give_back_others(std::int64_t kept) {
    if (!std::exchange(has_taken_, false)) return;
    connection_.execute(Sql("update till_held set taken = null, taken_cash = null, taken_user = null "
                            "where stcode = ") +
                        session_.store_code + " and taken_cash = " + session_.cash_point + " and id <> " +
                        kept);
    connection_.make_durable();
}

std::optional<database::JournalEntry> HeldInvoices::unfinished_save_of(const DraftMark& mark) {
    if (!state_.may_have_unfinished) return std::nullopt;
    for (database::JournalEntry& entry :
         database::unfinished_saves(connection_, session_.store_code, session_.cash_point))
        if (draft_of(entry) == mark) return std::move(entry);
    return std::nullopt;
}

// The cashier has not decided yet what becomes of the save, so the invoice is shown as before the crash.
void HeldInvoices::show_partly_saved(KeptInvoice kept, const database::JournalEntry& save) {
    database::Journal journal(connection_);
    journal.resume(save.id);
    show(std::move(kept));
    invoice_.number = read_invoice_to_save(save.content).invoice.number;
    sale_.partly_saved = PartlySaved{step_of_number(journal.last_step()), save.id};
}

// The other answer is to hold it. There is no question if the shop cannot hold invoices, or if the next
// customer is on the screen already.
bool HeldInvoices::wants_back(const KeptInvoice& kept) {
    std::string what = std::string(message::draft_found) + summary_of(kept.invoice);
    if (kept.user != session_.user_code) what += std::string(message::draft_of_user) + kept.user_name;
    if (!state_.may_hold) {
        services_.prompts.message(what + std::string(message::draft_restored), common::Icon::information);
        return true;
    }
    if (sale_.is_in_work()) return false;
    return services_.prompts.choose(what + std::string(message::restore_or_hold),
                                    {message::restore, message::put_aside},
                                    common::Icon::question) == common::Answer::yes;
}

}  // namespace sales
