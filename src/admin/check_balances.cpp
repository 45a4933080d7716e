// The check of the balances of customers and vendors. A save moves the balance of an invoice before it writes
// the header, and that of a voucher after its row, so a save that stopped between the two shows up here.
#include <map>
#include <set>

#include "accounts/vendor_account.h"
#include "accounts/voucher_saving.h"
#include "admin/checks.h"
#include "common/numbers.h"
#include "sales/unfinished.h"

namespace admin {

using accounts::PartyKind;
using database::Connection;
using database::Sql;

namespace {

using Sums = std::map<std::int64_t, double>;

double of(const Sums& sums, std::int64_t code) {
    const auto found = sums.find(code);
    return found == sums.end() ? 0.0 : found->second;
}

class BalanceCheck {
  public:
    explicit BalanceCheck(Connection& connection) : connection_(connection) {}

    Findings run() {
        for (const auto& row : connection_.query("select distinct vcode from purchase"))
            suppliers_.insert(row.integer("vcode"));
        for (const auto& row :
             connection_.query("select distinct vcode from purchase where isnull(op_n,0) = 0"))
            suppliers_elsewhere_.insert(row.integer("vcode"));
        unfinished();
        customers();
        vendors();
        if (findings_.empty()) add(Verdict::good, "customers, vendors and vouchers agree");
        return std::move(findings_);
    }

  private:
    void add(Verdict verdict, std::string text) {
        findings_.push_back({verdict, "balances", std::move(text)});
    }

    Sums sums(const database::Result& rows) {
        Sums by_party;
        for (const auto& row : rows)
            by_party[row.integer("vcode")] = row.number("total");
        return by_party;
    }

    // Collects the parties of saves that tills have not finished: their balances are not judged, because
    // check_unfinished() reports the saves.
    void unfinished() {
        for (const auto& entry : database::unfinished_saves(connection_)) {
            if (const auto invoice = sales::invoice_of(entry)) waiting_customers_.insert(invoice->customer);
            if (const auto voucher = accounts::voucher_of(entry)) {
                const accounts::VoucherKey key = voucher->key();
                (key.party_kind == PartyKind::vendor ? waiting_vendors_ : waiting_customers_)
                    .insert(key.party);
            }
        }
    }

    void customers() {
        const Sums invoices =
            sums(connection_.query("select vcode,sum(case when ctype = 0 or ctype = 1 then ptot - "
                                   "isnull(pdis,0) else isnull(pdis,0) - ptot "
                                   "end) as total from sales where vcode <> -1 group by vcode"));
        const Sums vouchers =
            sums(connection_.query(Sql("select vcode,sum(") + accounts::effect_on_customer +
                                   ") as total from vencuspay where ztype = 2 or ztype = 3 group by vcode"));
        for (const auto& row :
             connection_.query("select ccode,cname,copen,cacc from custdata order by ccode")) {
            const std::int64_t code = row.integer("ccode");
            const double expected = row.number("copen") + of(invoices, code) + of(vouchers, code);
            if (waiting_customers_.contains(code) || !differ(expected, row.number("cacc"))) continue;
            add(suppliers_.contains(code) ? Verdict::note : Verdict::wrong,
                "account customer " + std::to_string(code) + " (" + row.text("cname") + ") owes " +
                    common::format_amount(row.number("cacc")) +
                    ", but opening balance, invoices and vouchers add up to " +
                    common::format_amount(expected) +
                    "; compare the statement with the customer's receipts, write what is missing, then set "
                    "cacc");
        }
    }

    // Purchases that another program entered may be counted differently there.
    void vendors() {
        const Sums vouchers =
            sums(connection_.query(Sql("select vcode,0 - sum(") + accounts::effect_on_customer +
                                   ") as total from vencuspay where ztype = 1 group by "
                                   "vcode"));
        const Sums purchases =
            sums(connection_.query(Sql("select vcode,sum(") + accounts::effect_of_purchase() +
                                   ") as total from purchase group by vcode"));
        for (const auto& row :
             connection_.query("select vcode,vname,vopen,vacc from vendata order by vcode")) {
            const std::int64_t code = row.integer("vcode");
            const double expected = row.number("vopen") + of(purchases, code) + of(vouchers, code);
            if (waiting_vendors_.contains(code) || !differ(expected, row.number("vacc"))) continue;
            add(suppliers_elsewhere_.contains(code) ? Verdict::note : Verdict::wrong,
                "vendor " + std::to_string(code) + " (" + row.text("vname") + ") is owed " +
                    common::format_amount(row.number("vacc")) +
                    ", but opening balance, goods in and vouchers add up to " +
                    common::format_amount(expected) +
                    "; compare them with the vendor's papers, write what is missing, then "
                    "set vacc");
        }
    }

    Connection& connection_;
    std::set<std::int64_t> suppliers_;
    std::set<std::int64_t> suppliers_elsewhere_;  // with purchases that another program entered
    std::set<std::int64_t> waiting_customers_;
    std::set<std::int64_t> waiting_vendors_;
    Findings findings_;
};

}  // namespace

Findings check_balances(Connection& connection) {
    return BalanceCheck(connection).run();
}

}  // namespace admin
