// The checks of saved invoices. A save writes in steps, in this order: the account balance, the header, the
// bank row of a card payment, the lines, the stock. What is missing shows where it stopped. Saves in the
// journal are left to check_unfinished(), which says how to finish them.
#include <cmath>
#include <map>
#include <set>
#include <tuple>

#include "admin/checks.h"
#include "common/numbers.h"
#include "common/text.h"
#include "sales/invoice_key.h"
#include "sales/invoice_rows.h"
#include "sales/unfinished.h"

namespace admin {

using database::Connection;
using database::quoted;
using database::Sql;
using sales::InvoiceKey;

bool differ(double a, double b, std::int64_t lines) {
    constexpr double tolerance = 0.05;
    constexpr double tolerance_of_line = 0.005;
    return std::abs(a - b) > tolerance + static_cast<double>(lines) * tolerance_of_line +
                                 std::max(std::abs(a), std::abs(b)) * 1e-6;
}

namespace {

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
        find_unfinished();
        read();
        for (const auto& [key, header] : headers_)
            if (!unfinished_.contains(key)) compare(key, header);
        for (const auto& [key, lines] : lines_) {
            if (headers_.contains(key) || unfinished_.contains(key)) continue;
            wrong(name_of(key) + " has " + std::to_string(lines.count) +
                  " lines but no header: no total, no cash and no statement counts it; enter the header "
                  "again or "
                  "delete the lines from saledata");
        }
        card_payments();
        craftsman_lines();
        if (findings_.empty()) {
            findings_.push_back({Verdict::good, "invoices",
                                 std::to_string(headers_.size()) + " since " +
                                     common::date_text(period_.from) +
                                     ", each with its lines and bank rows"});
        }
        return std::move(findings_);
    }

  private:
    void wrong(std::string text) { findings_.push_back({Verdict::wrong, "invoices", std::move(text)}); }

    void find_unfinished() {
        for (const auto& entry : database::unfinished_saves(connection_))
            if (const auto invoice = sales::invoice_of(entry)) unfinished_.insert(key_of(*invoice));
    }

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
                  "customer's receipt, or " +
                  (key.is_sale() ? "return the money" : "take the money back") +
                  " and delete the header from sales");
            return;
        }
        const Lines& lines = found->second;
        const bool gap = header.count == 1 && lines.last != lines.count;
        if (!gap && !differ(header.total, lines.total, lines.count)) return;
        wrong(
            name_of(key) + " has a total of " + common::format_amount(header.total) + " but its " +
            std::to_string(lines.count) + " lines add up to " + common::format_amount(lines.total) +
            ": lines are missing, and the stock of the whole invoice was not moved; add the missing lines to "
            "saledata and " +
            (key.is_sale() ? "take the goods from stk" : "put the goods into stk"));
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
            if (unfinished_.contains(key)) continue;
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

    // What is left of a craftsman's work line is what was made less what was sold.
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
    std::set<InvoiceKey> unfinished_;
    std::map<InvoiceKey, Headers> headers_;
    std::map<InvoiceKey, Lines> lines_;
    Findings findings_;
};

}  // namespace

Findings check_invoices(Connection& connection, const Period& period) {
    return InvoiceCheck(connection, period).run();
}

}  // namespace admin
