// The checks of saved invoices. A save writes, in this order and without a transaction: the account balance,
// the header, the bank row of a card payment, the lines, the stock. What is missing tells where it was cut
// off.
#include <cmath>
#include <compare>
#include <map>
#include <set>
#include <tuple>

#include "admin/checks.h"
#include "common/numbers.h"
#include "common/text.h"

namespace admin {

using database::Connection;
using database::quoted;
using database::Sql;

namespace {

// Sums are kept in columns of single precision on some shops, and a line's price may have more than two
// decimals.
constexpr double tolerance = 0.05;

bool differ(double a, double b) {
    return std::abs(a - b) > tolerance + std::max(std::abs(a), std::abs(b)) * 1e-6;
}

// What header and lines have in common. Numbers alone are not enough: cash sales, account sales and each
// store's returns have series of their own.
struct Key {
    std::int64_t number;
    std::int64_t kind;
    std::int64_t customer;
    std::int64_t store;
    common::Date date;
    auto operator<=>(const Key&) const = default;
};

Key key_of(const database::Row& row) {
    return {row.integer("pnum"), row.integer("ctype"), row.integer("vcode"), row.integer("stcode"),
            row.moment("date").date};
}

std::string name_of(const Key& key) {
    const bool sale = key.kind == 0 || key.kind == 1;
    return std::string(sale ? "sale " : "return ") + std::to_string(key.number) + " of " +
           common::date_text(key.date) + " (store " + std::to_string(key.store) +
           (key.customer == -1 ? "" : ", account customer " + std::to_string(key.customer)) + ")";
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
            headers_[key_of(row)] = {row.integer("n"), row.number("total")};
        const auto lines = connection_.query(
            Sql("select pnum,ctype,vcode,stcode,[date],count(*) as n,max(serial) as last_,"
                "sum(quan * price - isnull(disc,0)) as total from saledata where [date] >= ") +
            quoted(period_.from) + " group by pnum,ctype,vcode,stcode,[date]");
        for (const auto& row : lines) {
            lines_[key_of(row)] = {row.integer("n"), row.integer("last_"), row.number("total")};
        }
    }

    void compare(const Key& key, const Headers& header) {
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
        if (!gap && !differ(header.total, lines.total)) return;
        wrong(
            name_of(key) + " has a total of " + common::format_amount(header.total) + " but its " +
            std::to_string(lines.count) + " lines add up to " + common::format_amount(lines.total) +
            ": lines are missing, and the stock of the whole invoice was not moved; add the missing lines to "
            "saledata and take the goods from stk");
    }

    // A card payment's bank row names the reference in its note; as many rows as payments must be there.
    void card_payments() {
        using Payment = std::tuple<std::int64_t, common::Date, std::string, double>;
        std::map<Payment, std::int64_t> rows;
        const auto rounded = [](double amount) { return common::round_decimals(amount, 2); };
        for (const auto& row : connection_.query(
                 Sql("select bcode,[date],quan,note1 from btran where type1 = 0 and [date] >= ") +
                 quoted(period_.from))) {
            const std::string note(common::trim(row.text("note1")));
            ++rows[{row.integer("bcode"), row.moment("date").date, note, rounded(row.number("quan"))}];
        }
        for (const auto& row :
             connection_.query(Sql("select pnum,ctype,vcode,stcode,[date],bcode,ref_no,ptot,pdis from sales "
                                   "where stype = 1 and "
                                   "safe = 1 and [date] >= ") +
                               quoted(period_.from))) {
            const Key key = key_of(row);
            const bool sale = key.kind == 0 || key.kind == 1;
            const double net = row.number("ptot") - row.number("pdis");
            const std::string note(common::trim(
                (sale ? "مبيعات إئتمان رقم مرجعي " : "مرتجع إئتمان رقم مرجعي ") + row.text("ref_no")));
            std::int64_t& left = rows[{row.integer("bcode"), key.date, note, rounded(net)}];
            if (left > 0) {
                --left;
                continue;
            }
            wrong(name_of(key) + " was paid by card (bank " + row.text("bcode") + ", reference " +
                  row.text("ref_no") + ", " + common::format_amount(net) +
                  ") but the bank ledger has no row for it; add it to btran");
        }
    }

    std::map<std::int64_t, double> sums(const database::Result& rows) {
        std::map<std::int64_t, double> by_customer;
        for (const auto& row : rows)
            by_customer[row.integer("vcode")] = row.number("total");
        return by_customer;
    }

    // The balance is moved before the header is written, so an invoice that never got its header shows here.
    void balances() {
        const auto invoices =
            sums(connection_.query("select vcode,sum(case when ctype = 0 or ctype = 1 then ptot - "
                                   "isnull(pdis,0) else isnull(pdis,0) - ptot "
                                   "end) as total from sales where vcode <> -1 group by vcode"));
        const auto vouchers =
            sums(connection_.query("select vcode,sum(case when ptype = 1 then quan else 0 - quan end) as "
                                   "total from vencuspay where ztype = "
                                   "2 or ztype = 3 group by vcode"));
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

    // What is left of a craftsman's work line is what was made less what was sold of it.
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
    std::map<Key, Headers> headers_;
    std::map<Key, Lines> lines_;
    Findings findings_;
};

}  // namespace

Findings check_invoices(Connection& connection, const Period& period) {
    return InvoiceCheck(connection, period).run();
}

}  // namespace admin
