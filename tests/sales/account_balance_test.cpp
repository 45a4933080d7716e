// An account customer's running balance after a long mixed history, against a sum kept apart from it.
#include <gtest/gtest.h>

#include <random>

#include "accounts/customer_card.h"
#include "common/numbers.h"
#include "sales/recall.h"
#include "sales/till.h"

namespace {

using sales::Invoice;
using sales::KindOption;
using sales::PaymentOption;
using sales::SaveOutcome;
using test::Till;

constexpr int customer = 7;

class History {
  public:
    explicit History(unsigned seed) : random_(seed) {
        till_.shop.sql("update stk set quan = 100000 where stcode = 1");
        till_.shop.sql("update custdata set copen = 100, cacc = 100");
        till_.shop.sql("insert into custdata (ccode,cname,copen,cacc) select 8,N'فندق النيل',0,0");
    }

    void step() {
        switch (between(0, 9)) {
            case 0:
                edit_opening();
                break;
            case 1:
            case 2:
                return_freely();
                break;
            case 3:
            case 4:
                return_part_of_a_sale();
                break;
            case 5:
                sell_to_others();
                break;
            default:
                sell();
        }
    }
    // What he owes, as the figures of each action make it.
    double owed() const { return owed_; }
    double balance() { return till_.shop.number("select cacc from custdata where ccode = 7"); }
    double balance_by_rows() {
        return till_.shop.number("select copen from custdata where ccode = 7") +
               till_.shop.number(
                   "select isnull(sum(ptot - pdis), 0) from sales where vcode = 7 and (ctype = "
                   "0 or ctype = 1)") -
               till_.shop.number(
                   "select isnull(sum(ptot - pdis), 0) from sales where vcode = 7 and (ctype = "
                   "2 or ctype = 3)");
    }

  private:
    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

    Invoice any_invoice() {
        Invoice invoice = till_.invoice();
        invoice.payment = PaymentOption::account;
        invoice.customer = customer;
        for (int lines = between(1, 4); lines > 0; --lines) {
            auto line = Till::line(between(0, 1) == 0 ? 100 : 200, between(1, 9999) / 1000.0,
                                   between(1, 99999) / 100.0);
            line.discount = common::round_decimals(line.gross() * between(0, 9) / 100, 2);
            invoice.lines.push_back(line);
        }
        invoice.discount_percent = between(0, 3) == 0 ? between(1, 999) / 100.0 : 0;
        return invoice;
    }
    // By hand, from quantities and prices.
    static double worth(const Invoice& invoice) {
        double sum = 0;
        for (const auto& line : invoice.lines)
            sum += line.quantity * line.price - line.discount;
        return sum * (1 - invoice.discount_percent / 100);
    }
    void save(Invoice invoice, double sign) {
        ASSERT_EQ(till_.saving().save(invoice, {}), SaveOutcome::saved) << till_.services.prompts.last();
        owed_ += sign * worth(invoice);
        if (sign > 0) sales_.push_back(invoice.number);
    }

    void sell() { save(any_invoice(), 1); }
    void return_freely() {
        Invoice invoice = any_invoice();
        invoice.kind = between(0, 1) == 0 ? KindOption::return_ : KindOption::third;
        save(invoice, -1);
    }
    void return_part_of_a_sale() {
        if (sales_.empty()) return;
        const auto number = sales_[static_cast<std::size_t>(between(0, static_cast<int>(sales_.size()) - 1))];
        const auto sale = sales::recall_newest(till_.connection(), number, sales::Series::account_sales, 1);
        ASSERT_TRUE(sale);
        Invoice back = sales::return_of(till_.connection(), *sale);
        if (back.lines.empty()) return;
        if (between(0, 1) == 0) {
            auto& line = back.lines.front();
            line.discount /= 2;
            line.quantity /= 2;
        }
        save(back, -1);
    }
    // What others buy, or what is paid in cash, is none of his.
    void sell_to_others() {
        Invoice invoice = any_invoice();
        if (between(0, 1) == 0) invoice.payment = PaymentOption::cash;
        invoice.customer = invoice.payment == PaymentOption::cash ? sales::walk_in_customer : 8;
        save(invoice, 0);
    }
    void edit_opening() {
        accounts::AccountCustomer desk(till_.connection());
        ASSERT_FALSE(desk.open(accounts::CardMode::edit, customer));
        const double before = desk.card.is_credit ? -common::numeric_value(desk.card.opening)
                                                  : common::numeric_value(desk.card.opening);
        const double amount = between(0, 100000) / 100.0;
        desk.card.opening = common::format_amount(amount);
        desk.card.is_credit = between(0, 1) == 0;
        ASSERT_FALSE(desk.save());
        owed_ += (desk.card.is_credit ? -amount : amount) - before;
    }

    Till till_;
    std::mt19937 random_;
    double owed_ = 100;
    std::vector<std::int64_t> sales_;
};

TEST(AccountBalance, FollowsEverySaleReturnAndEdit) {
    for (const unsigned seed : {1U, 20261121U, 77U}) {
        SCOPED_TRACE(seed);
        History history(seed);
        for (int n = 1; n <= 120; ++n) {
            ASSERT_NO_FATAL_FAILURE(history.step());
            ASSERT_NEAR(history.balance(), history.owed(), 1e-6) << "after " << n << " actions";
        }
        EXPECT_NEAR(history.balance_by_rows(), history.owed(), 1e-6);
    }
}

}  // namespace
