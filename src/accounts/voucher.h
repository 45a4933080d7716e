// The logic of the screens Form38 (receipts) and Form23 (payments): vouchers in cash or by cheque, and the
// balances they move.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/voucher_saving.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace accounts {

class Voucher {
  public:
    Voucher(VoucherKind kind, database::Connection& connection, const signin::Session& session,
            common::Services services)
        : kind_(kind), connection_(connection), session_(session), services_(services) {}

    // A new voucher: today, the workstation's store and drawer, cash, the next number proposed.
    void open_new();
    // Refused if no such voucher is found.
    std::optional<common::Refusal> open_edit(const VoucherKey& key);
    std::string_view title() const;

    // An edited voucher keeps its party. Choosing a customer also chooses his representative.
    void choose_party_kind(PartyKind kind);  // reloads the parties; none is chosen
    void choose_party(std::optional<std::int64_t> party);
    void choose_store(std::optional<std::int64_t> store);  // reloads the drawers; none is chosen
    // The second amount follows the amount until it is changed itself.
    void set_amount(std::string text);
    void set_second_amount(std::string text);

    // Writes the voucher, then moves the party's balance. Writes nothing if it is refused, unless the refusal
    // says that the voucher was saved in part; the next save then asks about it.
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
    std::optional<common::Refusal> check_number();
    void remember_cells();
    void set_printed(const VoucherRecord& record, common::Amount balance);

    VoucherKind kind_;
    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    std::optional<VoucherKey> opened_;   // how the edited row is found again
    std::vector<database::Value> seen_;  // its cells as they were opened; empty if unknown
    PartyKind party_kind_ = PartyKind::customer;
    bool second_changed_ = false;
    std::vector<common::Choice> parties_;
    std::vector<common::Choice> representatives_;
    std::vector<common::Choice> stores_;
    std::vector<common::Choice> drawers_;
    std::vector<common::Choice> banks_;
    std::optional<PrintedVoucher> printed_;
};

}  // namespace accounts
