// Saving a voucher: its row, then the balance of its party, as two steps of the journal of saves. An error or
// a power cut can come between them; the cashier then finishes or undoes the save.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/voucher_records.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/unfinished.h"
#include "signin/session.h"

namespace accounts {

// The steps of a save, in their order; the journal keeps their numbers.
enum class VoucherStep { none, voucher, balance };
// The step's name in Arabic, for the cashier and the log.
std::string_view name_of(VoucherStep step);

struct SavedVoucher {
    enum class Outcome {
        saved,
        undone,  // it stopped, and nothing of it is left
        left,    // it stopped part-way and waits in the journal
        partly,  // the same in a shop without a journal
    };
    VoucherKey key;
    Outcome outcome = Outcome::saved;
    VoucherStep finished = VoucherStep::none;
    common::Amount balance;  // the party's, if the voucher is saved
};
// What the cashier is told when a voucher was not saved.
common::Refusal why_not_saved(const SavedVoucher& voucher);

// A voucher with everything that its rows are made from.
struct VoucherToSave {
    VoucherRecord record;
    std::int64_t id = 0;               // its internal number
    std::optional<VoucherKey> former;  // of an edited voucher: how its row is found
    double moved = 0;                  // added to the party's balance by that row

    VoucherKey key() const;
};
// The voucher of an entry of the journal; nothing if it is of another kind or cannot be read.
std::optional<VoucherToSave> voucher_of(const database::JournalEntry& entry);
extern const database::Resumption voucher_resumption;

// Logs when a save begins and ends, and the step after which it stopped. After an error the cashier chooses
// whether to finish or undo what was begun.
class VoucherSaving {
  public:
    VoucherSaving(database::Connection& connection, const signin::Session& session,
                  const common::Services& services)
        : connection_(connection), session_(session), services_(services) {}

    // Asks about the vouchers that this till has not finished. Returns true if one was finished or undone.
    bool settle_earlier();
    // Adds a voucher under the next internal number. Throws if nothing was written.
    SavedVoucher add(const VoucherRecord& record);
    // Writes over the voucher found by its former key and moves the balance by the difference. Returns
    // nothing, and writes nothing, if the voucher is gone or its cells are no longer those seen; without
    // cells nothing is compared. Throws if nothing was written.
    std::optional<SavedVoucher> rewrite(const VoucherRecord& record, const VoucherKey& former,
                                        const std::vector<database::Value>& seen);

  private:
    SavedVoucher run(const VoucherToSave& save);
    void stop(const VoucherToSave& save, database::JournalEntry& entry, SavedVoucher& saved,
              const std::exception& error);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
};

// How the activity log names a voucher; the name ends with ")".
inline constexpr std::string_view voucher_log_name = "voucher ";
std::string log_name(VoucherKind kind, const VoucherKey& key);

}  // namespace accounts
