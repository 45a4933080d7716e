// A day of random sales, returns and transfers: the stock over all stores changes by exactly what left and
// what came back, an account customer owes exactly what he bought and did not return, and no sale comes back
// twice.
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>

#include "sales/returns.h"
#include "sales/till.h"

namespace {

using sales::Invoice;
using sales::KindOption;
using sales::Line;
using sales::PaymentOption;
using sales::SaveOutcome;
using test::Till;

using Sums = std::map<std::int64_t, double>;

Sums stock_of(Till& till, const std::string& where = {}) {
    Sums sums;
    for (const auto& row : till.connection().query(database::Sql::from_administrator(
             "select icode, sum(quan) as q from stk " + where + " group by icode")))
        sums[row.integer("icode")] = row.number("q");
    return sums;
}

class RandomDay {
  public:
    explicit RandomDay(unsigned seed) : random_(seed) {}

    void play(int steps) {
        Sums expected = stock_of(till_);
        for (int step = 0; step < steps; ++step) {
            SCOPED_TRACE(testing::Message() << "step " << step);
            Invoice invoice = next_invoice();
            const SaveOutcome outcome = till_.saving().save(invoice, {});
            ASSERT_NE(outcome, SaveOutcome::partly_saved) << till_.services.prompts.last();
            if (outcome == SaveOutcome::saved) {
                for (const Line& line : invoice.lines) {
                    if (line.stock_kept)
                        expected[*line.item_code] += (invoice.is_return() ? 1 : -1) * line.base_quantity();
                }
                if (invoice.payment == PaymentOption::account)
                    owed_ += (invoice.is_return() ? -1 : 1) * worth(invoice);
                if (!invoice.is_return()) sales_.push_back(invoice);
                ++saved;
            } else {
                ++refused;
            }
            for (const auto& [item, sum] : stock_of(till_))
                ASSERT_NEAR(sum, expected[item], 0.001) << "item " << item;
            ASSERT_NEAR(till_.shop.number("select cacc from custdata where ccode = 7"), owed_, 1e-6);
        }
    }

    // How many articles came back more often than their sale sold them.
    int returned_beyond_sale() {
        std::map<std::array<std::int64_t, 3>, double> left;
        for (const auto& row :
             till_.connection().query("select sales.ctype, sales.pnum, sales.vcode, sales.inv_o, "
                                      "saledata.icode, saledata.quan1 from sales inner "
                                      "join saledata on sales.pnum = saledata.pnum and "
                                      "sales.ctype = saledata.ctype and sales.stcode "
                                      "= saledata.stcode and sales.vcode = saledata.vcode")) {
            const bool sold = row.integer("ctype") == 0;
            if (!sold && row.null("inv_o")) continue;
            const std::int64_t sale = row.integer(sold ? "pnum" : "inv_o");
            left[{sale, row.integer("vcode"), row.integer("icode")}] += (sold ? 1 : -1) * row.number("quan1");
        }
        return static_cast<int>(
            std::count_if(left.begin(), left.end(), [](const auto& rest) { return rest.second < -0.001; }));
    }

    int saved = 0;
    int refused = 0;
    int transfers() { return static_cast<int>(till_.shop.number("select count(*) from sttran")); }
    int returns() {
        return static_cast<int>(till_.shop.number("select count(*) from sales where ctype = 2"));
    }

  private:
    // By hand, from quantities and prices.
    static double worth(const Invoice& invoice) {
        const auto piastres = [](double pounds) { return std::floor(pounds * 100 + 0.5 + 1e-6); };
        double sum = 0;
        for (const Line& line : invoice.lines)
            sum += piastres(line.quantity * line.price - line.discount);
        return (sum - piastres(sum * invoice.discount_percent / 10000)) / 100;
    }
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

    Invoice next_invoice() {
        const int what = pick(0, 9);
        if (what < 3 && !sales_.empty()) return return_of_a_sale();
        Invoice invoice = till_.invoice();
        invoice.store = pick(1, 2);
        if (what == 9) invoice.kind = KindOption::return_;
        if (pick(0, 2) == 0) {
            invoice.payment = PaymentOption::account;
            invoice.customer = 7;
        }
        if (pick(0, 3) == 0) invoice.discount_percent = pick(1, 999) / 100.0;
        const int lines = pick(1, 4);
        for (int at = 0; at < lines; ++at) {
            const std::int64_t item = 100 * pick(1, 3);
            Line line = Till::line(item, pick(1, 12) / 4.0, pick(1, 9999) / 100.0,
                                   item == 200 && pick(0, 2) == 0 ? 12 : 1);
            if (!invoice.is_return() && item != 300 && pick(0, 2) == 0) {
                line.source_kind = sales::SourceKind::other_store;
                line.source_store = 3 - invoice.store;  // without asking whether it has any
            }
            line.below_stock = pick(0, 5) == 0;
            invoice.lines.push_back(line);
        }
        return invoice;
    }

    Invoice return_of_a_sale() {
        const Invoice& sold = sales_[static_cast<std::size_t>(pick(0, static_cast<int>(sales_.size()) - 1))];
        const auto sale = sales::recall_newest(till_.connection(), sold.number,
                                               sales::series_of(sold.kind, sold.payment), sold.store);
        Invoice back = sales::return_of(till_.connection(), *sale);
        back.date = till_.invoice().date;
        for (Line& line : back.lines) {
            // A part of it, all of it, or more than was sold, which saving refuses.
            const int share = pick(0, 3);
            line.quantity = share == 3 ? line.quantity + 1 : line.quantity * (share + 1) / 3;
        }
        return back;
    }

    std::mt19937 random_;
    Till till_;
    std::vector<Invoice> sales_;
    double owed_ = 100;  // by customer 7
};

TEST(RandomDay, StockAndBalanceFollowEverySaleAndReturn) {
    for (const unsigned seed : {1u, 2u, 3u, 4u, 5u, 6u}) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        RandomDay day(seed);
        day.play(80);
        EXPECT_EQ(day.returned_beyond_sale(), 0);
        // The day contained enough of everything.
        EXPECT_GT(day.saved, 20);
        EXPECT_GT(day.refused, 2);
        EXPECT_GT(day.transfers(), 5);
        EXPECT_GT(day.returns(), 5);
    }
}

}  // namespace
