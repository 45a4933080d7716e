#include "sales/saving.h"

#include <algorithm>

#include "common/date_time.h"
#include "sales/events.h"
#include "sales/invoice_key.h"
#include "sales/invoice_receipt.h"
#include "sales/invoice_rows.h"
#include "sales/messages.h"
#include "sales/unfinished.h"

namespace sales {

namespace {

// `tallvex-admin check` finds the saves that never ended by these lines of the log.
std::string in_log(const Invoice& invoice) {
    return "save of " + log_name(key_of(invoice));
}

// The last step that the journal knows as done of a save whose answer was lost; nothing if the save is not in
// the journal any more, because it was completed.
std::optional<SaveStep> last_step_of(database::Connection& connection, std::int64_t id) {
    if (!database::is_unfinished(connection, id)) return std::nullopt;
    database::Journal journal(connection);
    journal.resume(id);
    return std::max(SaveStep::receipt, step_of_number(journal.last_step()));
}

// Marks a running save, so that a second press while a message or the printer is waiting does nothing.
class RunningMark {
  public:
    explicit RunningMark(bool& flag) : flag_(flag) { flag_ = true; }
    ~RunningMark() { flag_ = false; }
    RunningMark(const RunningMark&) = delete;
    RunningMark& operator=(const RunningMark&) = delete;

  private:
    bool& flag_;
};

}  // namespace

SaveOutcome Saving::save(Invoice& invoice, const PaymentTaken& payment, const DraftMark& draft) {
    if (is_running_) return SaveOutcome::refused;
    const RunningMark mark(is_running_);
    left_ = {};
    may_have_printed_ = false;
    sold_elsewhere_.clear();
    try {
        const common::Moment moment = services_.clock.now();
        time_ = moment.time;
        SavingChecks checks(connection_, session_, services_.prompts, invoice, &claims_);
        database::Reads reads;
        checks.ask(reads);
        std::optional<database::Result> settings;
        reads.add(receipt_settings(invoice, false),
                  [&settings](const database::Result& basic) { settings = basic; });
        reads.run(connection_);
        const auto shift = checks.run();
        if (!shift) return SaveOutcome::refused;
        invoice.number = claims_.number();
        log_begin(invoice);
        if (invoice.has_walk_in()) accounts::store_walk_in_customer(connection_, *invoice.walk_in);
        InvoiceToSave save{invoice,
                           payment,
                           moment,
                           *shift,
                           session_.user_code,
                           session_.user_name,
                           session_.cash_point,
                           claims_.id(),
                           draft};
        print(save, *settings);
        invoice.number = save.invoice.number;
        write(save);
        services_.log.log_event(in_log(invoice) + " finished", common::saving_code);
        tell_of_goods_sold_elsewhere();
        return SaveOutcome::saved;
    } catch (const std::exception& error) {
        return stopped(invoice, error);
    }
}

void Saving::log_begin(const Invoice& invoice) {
    services_.log.log_event(in_log(invoice) + " begins, lines " + std::to_string(invoice.lines.size()),
                            common::saving_code);
}

void Saving::print(InvoiceToSave& save, const database::Result& settings) {
    record(save);
    may_have_printed_ = true;
    print_receipts(settings, session_, printer_, save);
    left_.finished = SaveStep::receipt;
    while (claims_.number_taken(save.invoice)) {
        take_another_number(save.invoice);
        record(save);
        print_receipts(settings, session_, printer_, save);
    }
    // A receipt that is still printing may yet fail.
    if (!printer_.is_printing()) note_receipt(journal_);
}

// The journal comes first: a disk without room or a server that is away is noticed before anything is
// printed.
void Saving::record(const InvoiceToSave& save) {
    entry_ = entry_of(save, session_.store_code);
    if (may_have_printed_)
        journal_.rewrite(entry_);
    else
        journal_.begin(entry_);
}

// A till that knows no claims may have saved the number while the receipt was printing.
void Saving::take_another_number(Invoice& invoice) {
    services_.log.log_event(in_log(invoice) + " stopped, nothing saved, another till used its number",
                            common::saving_code);
    services_.prompts.message(std::string(message::partly_number) + std::to_string(invoice.number) +
                                  std::string(message::number_taken),
                              common::Icon::exclamation);
    claims_.claim_number(invoice);
    log_begin(invoice);
}

void Saving::write(const InvoiceToSave& save) {
    InvoiceRows rows(connection_, journal_, save);
    try {
        note_goods_sold_elsewhere(save.invoice, rows.first_short_line());
        note_save(session_, save.invoice);
        rows.write(claims_.removal());
        claims_.forget();
        connection_.make_durable();
    } catch (...) {
        left_.finished = rows.finished();
        throw;
    }
}

// Another till may have sold the goods as well. They lie on the counter and are paid for, so the sale goes
// on.
void Saving::note_goods_sold_elsewhere(const Invoice& invoice, const Line* line) {
    if (line == nullptr) return;
    sold_elsewhere_ = line->name;
    services_.log.log_event(log_name(key_of(invoice)) + " sells more than the stock: another till sold \"" +
                                line->name + "\" while the receipt was printing",
                            common::saving_code);
}

void Saving::tell_of_goods_sold_elsewhere() {
    if (sold_elsewhere_.empty()) return;
    services_.prompts.message(
        std::string(message::sold_elsewhere) + sold_elsewhere_ + std::string(message::sold_elsewhere_advice),
        common::Icon::exclamation);
}

// What stays in the journal keeps its claim until it is finished or undone.
SaveOutcome Saving::stopped(Invoice& invoice, const std::exception& error) {
    left_.journal_id = may_have_printed_ ? journal_.id() : 0;
    if (left_.journal_id != 0 && database::may_have_run(error) && has_ended()) {
        claims_.forget();
        services_.log.log_event(in_log(invoice) + " finished, though the last answer was lost",
                                common::saving_code);
        tell_of_goods_sold_elsewhere();
        return SaveOutcome::saved;
    }
    const bool nothing = left_.journal_id == 0 && left_.finished <= SaveStep::receipt &&
                         !(may_have_printed_ && database::may_have_run(error));
    services_.log.log_event(in_log(invoice) + " stopped, " + (nothing ? "nothing saved, " : "") +
                                "last finished step: " + std::string(name_of(left_.finished)) + ": " +
                                error.what(),
                            common::saving_code);
    if (left_.journal_id == 0 && !database::may_have_run(error)) claims_.release();
    if (nothing) {
        services_.prompts.message(
            database::with_reason(may_have_printed_ ? message::not_saved_paper_void : message::not_saved,
                                  error),
            common::Icon::critical);
        return SaveOutcome::refused;
    }
    if (left_.journal_id != 0) return settle_at_once(invoice, error);
    services_.prompts.message(std::string(message::partly_number) + std::to_string(invoice.number) +
                                  std::string(message::partly_saved) + std::string(name_of(left_.finished)) +
                                  "\n" + std::string(database::cause_of(error)) +
                                  std::string(message::partly_advice),
                              common::Icon::critical);
    return SaveOutcome::partly_saved;
}

// Looks into the journal how far the save came.
bool Saving::has_ended() {
    try {
        const auto last = last_step_of(connection_, left_.journal_id);
        if (last) left_.finished = std::max(left_.finished, *last);
        return !last;
    } catch (const std::exception&) {
        return false;  // the server is still away
    }
}

SaveOutcome Saving::settle_at_once(Invoice& invoice, const std::exception& error) {
    UnfinishedSaves unfinished(connection_, session_, services_, printer_);
    entry_.id = left_.journal_id;
    const bool is_printed = left_.finished >= SaveStep::receipt && !printer_.is_printing();
    const auto paper = is_printed ? database::Paper::printed : database::Paper::unknown;
    switch (unfinished.settle(entry_, paper, &error)) {
        case database::Settled::finished:
            invoice.number = invoice_of(entry_)->number;
            return SaveOutcome::saved;
        case database::Settled::undone:
            return SaveOutcome::refused;
        case database::Settled::left:
            break;
    }
    return SaveOutcome::partly_saved;
}

}  // namespace sales
