// The logic of the screens Form38 (receipts) and Form23 (payments): vouchers in cash or by cheque, and the
// balances they move. The direct receipt of the sales screen is one more kind.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/voucher_records.h"
#include "common/clock.h"
#include "common/refusal.h"
#include "database/connection.h"
#include "signin/session.h"

namespace accounts {

class Voucher {
  public:
    Voucher(VoucherKind kind, database::Connection& connection, const signin::Session& session,
            common::Clock& clock)
        : kind_(kind), connection_(connection), session_(session), clock_(clock) {}

    // A new voucher: today, the workstation's store and drawer, cash, the next number proposed.
    void open_new();
    // Refused if no such voucher is found.
    std::optional<common::Refusal> open_edit(const VoucherKey& key);
    std::string_view title() const;

    // The party of an edited voucher stays. A customer brings his representative.
    void choose_party_kind(PartyKind kind);  // reloads the parties; none is chosen
    void choose_party(std::optional<std::int64_t> party);
    void choose_store(std::optional<std::int64_t> store);  // reloads the drawers; none is chosen
    // The second amount follows the amount until it is changed itself.
    void set_amount(std::string text);
    void set_second_amount(std::string text);

    // Writes the voucher, then moves the party's balance. Writes nothing if it is refused. After an error
    // saving again completes what was left undone.
    std::optional<common::Refusal> save();
    // The voucher as it was saved last.
    const std::optional<PrintedVoucher>& printed() const { return printed_; }

    VoucherFields fields;
    Method method = Method::cash;

    VoucherKind kind() const { return kind_; }
    bool is_editing() const { return opened_.has_value(); }
    PartyKind party_kind() const { return party_kind_; }
    // What the party owes (a customer) or is owed (a vendor) now.
    double party_balance();
    const std::vector<common::Choice>& parties() const { return parties_; }
    const std::vector<common::Choice>& representatives() const { return representatives_; }
    const std::vector<common::Choice>& stores() const { return stores_; }
    const std::vector<common::Choice>& drawers() const { return drawers_; }
    const std::vector<common::Choice>& banks() const { return banks_; }

  private:
    void load_lists();
    std::optional<common::Refusal> check();
    std::optional<common::Refusal> check_place();
    void set_printed(const VoucherKey& key, common::Amount balance);

    VoucherKind kind_;
    database::Connection& connection_;
    const signin::Session& session_;
    common::Clock& clock_;
    std::optional<VoucherKey> opened_;   // how the edited row is found again
    std::vector<database::Value> seen_;  // its cells as they were opened; empty if unknown
    common::Amount unmoved_;             // what a failed save left the party's balance short of
    PartyKind party_kind_ = PartyKind::customer;
    bool second_changed_ = false;
    std::vector<common::Choice> parties_;
    std::vector<common::Choice> representatives_;
    std::vector<common::Choice> stores_;
    std::vector<common::Choice> drawers_;
    std::vector<common::Choice> banks_;
    std::optional<PrintedVoucher> printed_;
};

// The direct receipt: an account customer pays at the till.
struct DirectReceiptFields {
    std::optional<std::int64_t> customer;
    std::string amount = "0.00";
};
common::FormTable<DirectReceiptFields> direct_receipt_form();
std::optional<common::Refusal> check_direct_receipt(database::Connection& connection,
                                                    const DirectReceiptFields& fields);

// Writes a cash receipt of the amount into the workstation's drawer, dated `date`, and lowers what the
// customer owes by it. Returns the receipt as it is printed. Throws std::invalid_argument and writes nothing
// if the customer has no row or the amount is not above 0, which check_direct_receipt refuses.
PrintedVoucher write_direct_receipt(database::Connection& connection, const signin::Session& session,
                                    common::Clock& clock, std::int64_t customer, const common::Date& date,
                                    common::Amount amount);

}  // namespace accounts
