// The logic of Form38 (receipts) and Form23 (payments): vouchers in cash or by cheque, and the balances they
// move.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/lists.h"
#include "accounts/printed_voucher.h"
#include "accounts/voucher_statements.h"
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
    // False with a message when no such voucher is found.
    bool open_edit(const VoucherKey& key);
    std::string_view title() const;

    // The party of a voucher that is edited stays. A customer brings his representative.
    void choose_party_kind(PartyKind kind);  // reloads the parties, of which none is chosen
    void choose_party(std::optional<std::int64_t> party);
    void choose_store(std::int64_t store);  // reloads the drawers, of which none is chosen
    // The second amount, the part already due, follows the amount until it is changed itself.
    void set_amount(std::string text);
    void set_second_amount(std::string text);

    // Writes the voucher, then moves the party's balance. True when both were done; on a refusal a message
    // was shown and nothing was written.
    bool save();
    // The voucher as it was saved last, for printing.
    const std::optional<PrintedVoucher>& printed() const { return printed_; }

    // Fields.
    common::Date date;
    std::string number;
    std::string discount = "0.00";
    std::string note;  // its first 50 characters are kept
    std::optional<std::int64_t> representative;
    Method method = Method::cash;
    std::optional<std::int64_t> drawer;
    std::optional<std::int64_t> bank;
    common::Date cheque_date;
    std::string cheque_owner;

    VoucherKind kind() const { return kind_; }
    bool is_editing() const { return opened_.has_value(); }
    PartyKind party_kind() const { return party_kind_; }
    const std::optional<std::int64_t>& party() const { return party_; }
    // What the party owes (a customer) or is owed (a vendor) now.
    double party_balance();
    std::int64_t store() const { return store_; }
    const std::string& amount() const { return amount_; }
    const std::string& second_amount() const { return second_amount_; }
    const std::vector<common::Choice>& parties() const { return parties_; }
    const std::vector<common::Choice>& representatives() const { return representatives_; }
    const std::vector<common::Choice>& stores() const { return stores_; }
    const std::vector<common::Choice>& drawers() const { return drawers_; }
    const std::vector<common::Choice>& banks() const { return banks_; }

  private:
    struct Amounts {
        double amount = 0;
        double discount = 0;
        double second = 0;
    };
    bool refuse(std::string_view text);
    void load_lists();
    void load_parties();
    std::optional<Amounts> checked();
    void set_printed(const VoucherRow& row, const Moved& moved, double effect);

    VoucherKind kind_;
    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    std::optional<VoucherKey> opened_;   // how the edited row is found again
    std::vector<database::Value> seen_;  // its cells as they were opened; empty: not known
    double unmoved_ = 0;                 // what a failed save left the party's balance short of
    PartyKind party_kind_ = PartyKind::customer;
    std::optional<std::int64_t> party_;
    std::int64_t store_ = 0;
    std::string amount_ = "0.00";
    std::string second_amount_ = "0.00";
    bool second_changed_ = false;
    std::vector<common::Choice> parties_;
    std::vector<common::Choice> representatives_;
    std::vector<common::Choice> stores_;
    std::vector<common::Choice> drawers_;
    std::vector<common::Choice> banks_;
    std::optional<PrintedVoucher> printed_;
};

}  // namespace accounts
