#include "accounts/voucher_saving.h"

#include <fmt/format.h>

#include "accounts/messages.h"
#include "accounts/voucher_rows.h"
#include "database/resumption.h"

namespace accounts {

using database::Connection;
using database::Journal;
using database::JournalEntry;
using Outcome = SavedVoucher::Outcome;

TALLVEX_JSON(VoucherKey, party_kind, party, date, amount, number, id)
TALLVEX_JSON(VoucherFields, number, date, party, amount, discount, second_amount, store, drawer, bank,
             cheque_date, cheque_owner, representative, note)
TALLVEX_JSON(VoucherRecord, kind, party_kind, method, fields, written_at)
TALLVEX_JSON(VoucherToSave, record, id, former, moved)

namespace {

constexpr std::string_view journal_kind = "voucher";

// How much a voucher adds to its party's balance, unrounded, because rows of other programs may hold more
// decimals.
double effect_of(const database::Row& voucher) {
    return effect_on_balance(static_cast<VoucherKind>(voucher.integer("ptype")),
                             static_cast<PartyKind>(voucher.integer("ztype")), method_of(voucher),
                             voucher.number("quan"));
}

VoucherToSave read_save(const JournalEntry& entry) {
    return common::from_json_text<VoucherToSave>(entry.content);
}

std::string log_name_of(const JournalEntry& entry) {
    const VoucherToSave save = read_save(entry);
    return log_name(save.record.kind, save.key());
}

}  // namespace

const database::Resumption voucher_resumption = {journal_kind, log_name_of,
                                                 database::finish_rows<VoucherToSave, VoucherRows>,
                                                 database::undo_rows<VoucherToSave, VoucherRows>};

VoucherKey VoucherToSave::key() const {
    VoucherKey made = record.key();
    made.id = id;
    return made;
}

std::optional<VoucherToSave> voucher_of(const JournalEntry& entry) {
    if (entry.kind != journal_kind) return std::nullopt;
    try {
        return read_save(entry);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

std::string_view name_of(VoucherStep step) {
    constexpr std::string_view names[] = {
        "لا شيء",         // nothing
        "كتابة الإيصال",  // writing the voucher
        "رصيد الطرف",     // the party's balance
    };
    return names[static_cast<std::size_t>(step)];
}

common::Refusal why_not_saved(const SavedVoucher& voucher) {
    if (voucher.outcome == Outcome::undone) return {"", std::string(message::voucher_undone)};
    return {"", std::string(message::voucher_number) + voucher.key.number +
                    std::string(message::voucher_partly_saved) + std::string(name_of(voucher.finished)) +
                    std::string(voucher.outcome == Outcome::left ? message::voucher_asked_again
                                                                 : message::voucher_partly_advice)};
}

std::string log_name(VoucherKind kind, const VoucherKey& key) {
    return std::string(voucher_log_name) + std::to_string(key.id) + " (kind " +
           std::to_string(static_cast<int>(kind)) + ", kind of party " +
           std::to_string(static_cast<int>(key.party_kind)) + ", party " + std::to_string(key.party) + ")";
}

bool VoucherSaving::settle_earlier() {
    bool any = false;
    for (JournalEntry& entry :
         database::unfinished_saves(connection_, session_.store_code, session_.cash_point)) {
        if (entry.kind != journal_kind) continue;
        any = database::settle(connection_, services_, entry, voucher_resumption, database::Paper::none,
                               nullptr) != database::Settled::left ||
              any;
    }
    return any;
}

SavedVoucher VoucherSaving::add(const VoucherRecord& record) {
    return run({record, next_voucher_id(connection_), std::nullopt, 0});
}

std::optional<SavedVoucher> VoucherSaving::rewrite(const VoucherRecord& record, const VoucherKey& former,
                                                   const std::vector<database::Value>& seen) {
    const auto found = find_voucher(connection_, record.kind, former);
    if (!found || (!seen.empty() && found->row.cells() != seen)) return std::nullopt;
    std::int64_t id = found->row.integer("pay_id");
    if (id == 0) id = next_voucher_id(connection_);
    return run({record, id, former, effect_of(found->row)});
}

SavedVoucher VoucherSaving::run(const VoucherToSave& save) {
    const VoucherKey key = save.key();
    SavedVoucher saved{key, Outcome::saved, VoucherStep::none, {}};
    const std::string in_log = "save of " + log_name(save.record.kind, key);
    services_.log.log_event(in_log + " begins, amount " + key.amount.text() + ", number " + key.number,
                            common::saving_code);
    JournalEntry entry{
        0,
        session_.store_code,
        session_.cash_point,
        std::string(journal_kind),
        fmt::format("{} رقم {} بمبلغ {}",
                    save.record.kind == VoucherKind::receipt ? "إيصال مقبوضات" : "إيصال مدفوعات", key.number,
                    key.amount.text()),
        services_.clock.now(),
        common::json_text(save)};
    Journal journal(connection_);
    VoucherRows rows(connection_, journal, save);
    try {
        journal.begin(entry);
        rows.write();
        journal.end();
        connection_.make_durable();
        saved.key.id = rows.id();
        saved.finished = rows.finished();
        saved.balance = rows.balance();
        services_.log.log_event(in_log + " finished", common::saving_code);
    } catch (const std::exception& error) {
        saved.finished = rows.finished();
        entry.id = journal.id();
        stop(save, entry, saved, error);
    }
    return saved;
}

void VoucherSaving::stop(const VoucherToSave& save, JournalEntry& entry, SavedVoucher& saved,
                         const std::exception& error) {
    const bool nothing =
        entry.id == 0 && saved.finished == VoucherStep::none && !database::may_have_run(error);
    services_.log.log_event("save of " + log_name(save.record.kind, saved.key) + " stopped, " +
                                (nothing ? "nothing saved, " : "") + "last finished step: " +
                                std::string(name_of(saved.finished)) + ": " + error.what(),
                            common::saving_code);
    if (entry.id == 0) {
        if (saved.finished == VoucherStep::none) throw;
        saved.outcome = Outcome::partly;
        return;
    }
    switch (
        database::settle(connection_, services_, entry, voucher_resumption, database::Paper::none, &error)) {
        case database::Settled::finished:
            saved.finished = VoucherStep::balance;
            saved.balance = common::Amount(
                find_party(connection_, saved.key.party_kind, saved.key.party).value_or(Party()).balance);
            break;
        case database::Settled::undone:
            saved.outcome = Outcome::undone;
            break;
        case database::Settled::left:
            saved.outcome = Outcome::left;
            break;
    }
}

}  // namespace accounts
