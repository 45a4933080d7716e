// Saving a voucher: its row, then the balance of its party, as two statements. An error or a power cut can
// come between them. So a row of the table till_voucher says of each voucher being saved by how much its
// party's balance has moved for it, and saving the voucher again moves the rest. A shop without the table
// works too; there the check of the balances finds such vouchers.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/voucher_records.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"

namespace accounts {

// The steps of a save, in their order.
enum class VoucherStep { none, voucher, balance };
// The step's name in Arabic, for the cashier and the log.
std::string_view name_of(VoucherStep step);

struct SavedVoucher {
    VoucherKey key;
    VoucherStep finished = VoucherStep::none;
    // The party's balance now; nothing if the save stopped after the voucher was written.
    std::optional<common::Amount> balance;
};
// What the cashier is told of a voucher that was saved in part.
common::Refusal partly_saved(const SavedVoucher& voucher);

// Logs when a save begins and ends, and the step after which it stopped.
class VoucherSaving {
  public:
    VoucherSaving(database::Connection& connection, common::Log& log) : connection_(connection), log_(log) {}

    // Adds a voucher under the next internal number. Throws if it was not written.
    SavedVoucher add(const VoucherRecord& record);
    // Writes over the voucher found by its former key and moves the balance by the difference, and by what an
    // earlier save failed to move. Returns nothing, and writes nothing, if the voucher is gone or its cells
    // are no longer those seen; without cells nothing is compared. Throws if it was not written.
    std::optional<SavedVoucher> rewrite(const VoucherRecord& record, const VoucherKey& former,
                                        const std::vector<database::Value>& seen);

  private:
    struct Attempt;
    template <typename Write>
    SavedVoucher run(const Attempt& attempt, Write write);
    void move_party(const Attempt& attempt, SavedVoucher& saved);
    void stop(const Attempt& attempt, const SavedVoucher& saved, const std::exception& error);

    database::Connection& connection_;
    common::Log& log_;
};

// A voucher whose party's balance lacks a part of it, or all.
struct UnmovedVoucher {
    VoucherKind kind = VoucherKind::receipt;
    VoucherKey key;
    common::Amount missing;
};
std::vector<UnmovedVoucher> unmoved_vouchers(database::Connection& connection);
// What the balance lacks of a stored voucher, a row of vencuspay.
common::Amount missing_from_balance(database::Connection& connection, const database::Row& voucher);
// The key of a voucher that another save, or an attempt whose answer was lost, left with its balance unmoved
// and that is this one to the letter.
std::optional<VoucherKey> find_half_saved(database::Connection& connection, const VoucherRecord& record);

// How the activity log names a voucher; the name ends with ")".
inline constexpr std::string_view voucher_log_name = "voucher ";
std::string log_name(VoucherKind kind, const VoucherKey& key);

}  // namespace accounts
