// The checks of saved invoices. A save writes without a transaction, in this order: the account balance, the
// header, the bank row of a card payment, the lines, the stock. What is missing shows where it stopped.
#include <cmath>
#include <map>
#include <set>
#include <tuple>

#include "accounts/voucher_records.h"
#include "admin/checks.h"
#include "common/numbers.h"
#include "common/text.h"
#include "sales/invoice_key.h"
#include "sales/saving.h"

namespace admin {

using database::Connection;
using database::quoted;
using database::Sql;
using sales::InvoiceKey;

namespace {

// Some shops keep sums in columns of single precision.
constexpr double tolerance = 0.05;
// A line's value was rounded before it was added, or another program added it unrounded.
constexpr double tolerance_of_line = 0.005;

bool differ(double a, double b, std::int64_t lines = 0) {
    return std::abs(a - b) > tolerance + static_cast<double>(lines) * tolerance_of_line +
                                 std::max(std::abs(a), std::abs(b)) * 1e-6;
}

std::string name_of(const InvoiceKey& key) {
    return std::string(key.is_sale() ? "sale " : "return ") + std::to_string(key.number) + " of " +
           common::date_text(key.date) + " (store " + std::to_string(key.store) +
           (key.vcode == sales::walk_in_customer ? "" : ", account customer " + std::to_string(key.vcode)) +
           ")";
}

struct Lines {
    std::int64_t count = 0;
    std::int64_t last = 0;  // highest serial
    double total = 0;
};

struct Headers {
    std::int64_t count = 0;
    double total = 0;
};

class InvoiceCheck {
  public:
    InvoiceCheck(Connection& connection, const Period& period) : connection_(connection), period_(period) {}

    Findings run() {
        read();
        for (const auto& [key, header] : headers_)
            compare(key, header);
        for (const auto& [key, lines] : lines_) {
            if (headers_.contains(key)) continue;
            wrong(name_of(key) + " has " + std::to_string(lines.count) +
                  " lines but no header: no total, no cash and no statement counts it; enter the header "
                  "again or "
                  "delete the lines from saledata");
        }
        card_payments();
        balances();
        craftsman_lines();
        if (findings_.empty()) {
            findings_.push_back({Verdict::good, "invoices",
                                 std::to_string(headers_.size()) + " since " +
                                     common::date_text(period_.from) +
                                     ", each with its lines, balances and bank rows"});
        }
        return std::move(findings_);
    }

  private:
    void wrong(std::string text) { findings_.push_back({Verdict::wrong, "invoices", std::move(text)}); }

    void read() {
        const auto headers =
            connection_.query(Sql("select pnum,ctype,vcode,stcode,[date],count(*) as n,sum(ptot) as total "
                                  "from sales where [date] >= ") +
                              quoted(period_.from) + " group by pnum,ctype,vcode,stcode,[date]");
        for (const auto& row : headers)
            headers_[sales::key_of(row)] = {row.integer("n"), row.number("total")};
        const auto lines = connection_.query(
            Sql("select pnum,ctype,vcode,stcode,[date],count(*) as n,max(serial) as last_,"
                "sum(quan * price - isnull(disc,0)) as total from saledata where [date] >= ") +
            quoted(period_.from) + " group by pnum,ctype,vcode,stcode,[date]");
        for (const auto& row : lines) {
            lines_[sales::key_of(row)] = {row.integer("n"), row.integer("last_"), row.number("total")};
        }
    }

    void compare(const InvoiceKey& key, const Headers& header) {
        if (header.count > 1) {
            findings_.push_back(
                {Verdict::note, "invoices",
                 name_of(key) + " is there " + std::to_string(header.count) +
                     " times: two tills took the same number; their lines cannot be told apart"});
        }
        const auto found = lines_.find(key);
        if (found == lines_.end()) {
            wrong(name_of(key) + ", total " + common::format_amount(header.total) +
                  ", has a header and no lines, and its stock was not moved; enter the goods again from the "
                  "customer's receipt, or return the money and delete the header from sales");
            return;
        }
        const Lines& lines = found->second;
        const bool gap = header.count == 1 && lines.last != lines.count;
        if (!gap && !differ(header.total, lines.total, lines.count)) return;
        wrong(
            name_of(key) + " has a total of " + common::format_amount(header.total) + " but its " +
            std::to_string(lines.count) + " lines add up to " + common::format_amount(lines.total) +
            ": lines are missing, and the stock of the whole invoice was not moved; add the missing lines to "
            "saledata and take the goods from stk");
    }

    // The bank row of a card payment has the reference in its note. There must be one row for each payment.
    void card_payments() {
        using Payment = std::tuple<std::int64_t, common::Date, std::string, common::Amount>;
        std::map<Payment, std::int64_t> rows;
        for (const auto& row : connection_.query(
                 Sql("select bcode,[date],quan,note1 from btran where type1 = 0 and [date] >= ") +
                 quoted(period_.from))) {
            const std::string note(common::trim(row.text("note1")));
            ++rows[{row.integer("bcode"), row.moment("date").date, note, common::Amount(row.number("quan"))}];
        }
        for (const auto& row :
             connection_.query(Sql("select pnum,ctype,vcode,stcode,[date],bcode,ref_no,ptot,pdis from sales "
                                   "where stype = 1 and "
                                   "safe = 1 and [date] >= ") +
                               quoted(period_.from))) {
            const InvoiceKey key = sales::key_of(row);
            const common::Amount net(row.number("ptot") - row.number("pdis"));
            const std::string card_note = sales::card_note(key.is_sale(), row.text("ref_no"));
            const std::string note(common::trim(card_note));
            std::int64_t& left = rows[{row.integer("bcode"), key.date, note, net}];
            if (left > 0) {
                --left;
                continue;
            }
            wrong(name_of(key) + " was paid by card (bank " + row.text("bcode") + ", reference " +
                  row.text("ref_no") + ", " + net.text() +
                  ") but the bank ledger has no row for it; add it to btran");
        }
    }

    std::map<std::int64_t, double> sums(const database::Result& rows) {
        std::map<std::int64_t, double> by_customer;
        for (const auto& row : rows)
            by_customer[row.integer("vcode")] = row.number("total");
        return by_customer;
    }

    // A save changes the balance before it writes the header, so that an invoice without a header shows here.
    void balances() {
        const auto invoices =
            sums(connection_.query("select vcode,sum(case when ctype = 0 or ctype = 1 then ptot - "
                                   "isnull(pdis,0) else isnull(pdis,0) - ptot "
                                   "end) as total from sales where vcode <> -1 group by vcode"));
        const auto vouchers =
            sums(connection_.query(Sql("select vcode,sum(") + accounts::effect_on_customer +
                                   ") as total from vencuspay where ztype = 2 or ztype = 3 group by vcode"));
        std::set<std::int64_t> suppliers;
        for (const auto& row : connection_.query("select distinct vcode from purchase")) {
            suppliers.insert(row.integer("vcode"));
        }
        for (const auto& row :
             connection_.query("select ccode,cname,copen,cacc from custdata order by ccode")) {
            const std::int64_t code = row.integer("ccode");
            const auto of = [code](const std::map<std::int64_t, double>& all) {
                const auto found = all.find(code);
                return found == all.end() ? 0.0 : found->second;
            };
            const double expected = row.number("copen") + of(invoices) + of(vouchers);
            if (!differ(expected, row.number("cacc"))) continue;
            findings_.push_back({suppliers.contains(code) ? Verdict::note : Verdict::wrong, "balances",
                                 "account customer " + std::to_string(code) + " (" + row.text("cname") +
                                     ") owes " + common::format_amount(row.number("cacc")) +
                                     ", but opening balance, invoices and vouchers add up to " +
                                     common::format_amount(expected) +
                                     "; compare the statement with the customer's receipts, write what is "
                                     "missing, then set cacc"});
        }
    }

    // A craftsman's work line has left what was made less what was sold of it.
    void craftsman_lines() {
        std::map<std::int64_t, double> sold;
        for (const auto& row : connection_.query("select salvcode,sum(case when ctype = 0 or ctype = 1 then "
                                                 "quan else 0 - quan end) as total from "
                                                 "saledata where salvcode <> 0 group by salvcode")) {
            sold[row.integer("salvcode")] = row.number("total");
        }
        for (const auto& row : connection_.query("select scode,qty,cqty from salver order by scode")) {
            const double left = row.number("qty") - sold[row.integer("scode")];
            if (!differ(left, row.number("cqty"))) continue;
            wrong("craftsman line " + row.text("scode") + " has " +
                  common::format_quantity(row.number("cqty")) +
                  " left, but what was made less what was sold is " + common::format_quantity(left) +
                  "; set cqty in salver");
        }
    }

    Connection& connection_;
    Period period_;
    std::map<InvoiceKey, Headers> headers_;
    std::map<InvoiceKey, Lines> lines_;
    Findings findings_;
};

}  // namespace

Findings check_invoices(Connection& connection, const Period& period) {
    return InvoiceCheck(connection, period).run();
}

}  // namespace admin
