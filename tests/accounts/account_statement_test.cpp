#include "accounts/account_statement.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <ctime>
#include <numeric>
#include <random>

#include "accounts/customer_card.h"
#include "accounts/direct_receipt.h"
#include "accounts/messages.h"
#include "accounts/voucher.h"
#include "common/numbers.h"
#include "database/till_settings.h"
#include "office.h"

namespace accounts {
namespace {

class Statement : public testing::Test {
  protected:
    AccountStatement of(std::int64_t customer, const common::Date& start, const common::Date& end) {
        AccountStatement statement(office.shop.connection(), office.services.all());
        statement.open();
        statement.fields.customer = customer;
        statement.fields.start = start;
        statement.fields.end = end;
        return statement;
    }
    void invoice(int number, int ctype, const std::string& total, const std::string& date, int customer = 7,
                 const std::string& permit = "null", const std::string& discount = "0") {
        office.shop.sql("insert into sales (pnum,ctype,ptot,[date],vcode,stcode,perm_no,pdis) select " +
                        std::to_string(number) + "," + std::to_string(ctype) + "," + total + ",'" + date +
                        "'," + std::to_string(customer) + ",1," + permit + "," + discount);
    }
    void voucher(int ptype, int type, const std::string& number, const std::string& amount,
                 const std::string& date, int ztype = 2) {
        office.shop.sql("insert into vencuspay (chkno,ptype,[type],quan,quan1,[date],vcode,ztype) select '" +
                        number + "'," + std::to_string(ptype) + "," + std::to_string(type) + "," + amount +
                        "," + amount + ",'" + date + "',7," + std::to_string(ztype));
    }
    void count_discounts_from(const char* day) {
        database::set_till_setting(office.shop.connection(), database::setting::net_from, day);
    }
    // Date, credit, debit, balance and text of each row, with one blank between them.
    static std::string text_of(const AccountStatement& statement) {
        std::string text;
        for (const StatementRow& row : statement.rows()) {
            const auto cells = row.cells();
            text += cells[0] + " " + cells[1] + " " + cells[2] + " " + cells[3] + " " + cells[4] + "\n";
        }
        return text;
    }
    void purchase(int number, int ctype, const std::string& total, const std::string& date) {
        office.shop.sql("insert into purchase (pnum,ctype,ptot,[date],vcode,stcode) select " +
                        std::to_string(number) + "," + std::to_string(ctype) + "," + total + ",'" + date +
                        "',7,1");
    }
    test::Office office;
};

TEST_F(Statement, EverySourceHasItsSideAndItsWords) {
    invoice(1, 0, "500", "2026/11/01", 7, "'P-9'");
    invoice(2, 2, "40", "2026/11/02");
    invoice(3, 1, "9000", "2026/11/03");
    invoice(4, 3, "9000", "2026/11/03");
    invoice(5, 0, "9000", "2026/11/03", 8);
    purchase(6, 1, "30", "2026/11/04");
    purchase(7, 3, "5", "2026/11/05");
    voucher(2, 1, "A1", "100", "2026/11/06");
    voucher(2, 0, "A2", "10", "2026/11/07", 3);
    voucher(2, 2, "A3", "2", "2026/11/08");
    voucher(2, 3, "A4", "3", "2026/11/09");
    voucher(1, 1, "B1", "20", "2026/11/10");
    voucher(1, 0, "B2", "21", "2026/11/11");
    voucher(1, 2, "B3", "22", "2026/11/12");
    voucher(1, 3, "B4", "23", "2026/11/13");
    voucher(1, 1, "V1", "777", "2026/11/13", 1);  // to the vendor of the same code
    AccountStatement statement = of(7, {2026, 11, 1}, {2026, 11, 30});
    ASSERT_FALSE(statement.show());
    using Cells = std::array<std::string, 6>;
    const std::vector<Cells> expected{
        {"", "0.00", "0.00", "100.00", "الرصيد في 2026/11/01", ""},
        {"2026/11/01", "0.00", "500.00", "600.00", "مبيعات : إذن رقم 1", "فاتورة رقم :P-9"},
        {"2026/11/02", "40.00", "0.00", "560.00", "مرتجع مبيع : اذن رقم 2", ""},
        {"2026/11/04", "30.00", "0.00", "530.00", "توريد : فاتورة رقم 6", ""},
        {"2026/11/05", "0.00", "5.00", "535.00", "مرتجع مورد : اذن رقم 7", ""},
        {"2026/11/06", "100.00", "0.00", "435.00", "ايصال استلام نقدية رقم : A1", ""},
        {"2026/11/07", "10.00", "0.00", "425.00", " شيك رقم A2", ""},
        {"2026/11/08", "2.00", "0.00", "423.00", "اشعار خصم برقم A3", ""},
        {"2026/11/09", "0.00", "3.00", "426.00", "اشعار اضافة رقم A4", ""},
        {"2026/11/10", "0.00", "20.00", "446.00", "ايصال دفع رقم B1", ""},
        {"2026/11/11", "0.00", "21.00", "467.00", " شيك رقم B2", ""},
        {"2026/11/12", "0.00", "22.00", "489.00", "مدفوعات :اشعار خصم برقم B3", ""},
        {"2026/11/13", "23.00", "0.00", "466.00", "اضافة :  رقم B4", ""},
        {"", "0.00", "0.00", "466.00", "الرصيد في 2026/11/30", ""}};
    ASSERT_EQ(statement.rows().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(statement.rows()[i].cells(), expected[i]);
    EXPECT_EQ(office.shop.cell("select f6 from tmp_acc where note1 like N'%مرتجع مورد%'"), "5");

    // The balance brought forward counts each source on the same side.
    AccountStatement later = of(7, {2026, 11, 14}, {2026, 11, 30});
    ASSERT_FALSE(later.show());
    EXPECT_EQ(later.brought_forward().text(), "466.00");
    EXPECT_EQ(later.closing().text(), "466.00");
}

TEST_F(Statement, AMovementOnTheStartDateIsListed) {
    invoice(1, 0, "10", "2026/11/05");
    invoice(2, 0, "20", "2026/11/06");
    AccountStatement statement = of(7, {2026, 11, 6}, {2026, 11, 6});
    ASSERT_FALSE(statement.show());
    EXPECT_EQ(statement.brought_forward().text(), "110.00");
    EXPECT_EQ(statement.debits().text(), "20.00");
    EXPECT_EQ(statement.rows().size(), 3U);
}

// The discounts of the 5th and the 6th count, that of the 4th does not: 100 + 200 + 300 - 30 - 50 + 5 = 525.
TEST_F(Statement, ADiscountHasItsRowFromTheDayOfTheSetting) {
    invoice(1, 0, "200", "2026/11/04", 7, "null", "20");
    invoice(2, 0, "300", "2026/11/05", 7, "null", "30");
    invoice(3, 2, "50", "2026/11/06", 7, "null", "5");
    invoice(4, 0, "70", "2026/11/06", 8, "null", "7");
    AccountStatement statement = of(7, {2026, 11, 1}, {2026, 11, 6});
    ASSERT_FALSE(statement.show());
    EXPECT_EQ(statement.rows().size(), 5U);
    EXPECT_EQ(statement.closing().text(), "550.00");  // without the setting no discount counts

    count_discounts_from("2026/11/05");
    ASSERT_FALSE(statement.show());
    EXPECT_EQ(text_of(statement),
              " 0.00 0.00 100.00 الرصيد في 2026/11/01\n"
              "2026/11/04 0.00 200.00 300.00 مبيعات : إذن رقم 1\n"
              "2026/11/05 0.00 300.00 600.00 مبيعات : إذن رقم 2\n"
              "2026/11/05 30.00 0.00 570.00 خصم\n"
              "2026/11/06 50.00 0.00 520.00 مرتجع مبيع : اذن رقم 3\n"
              "2026/11/06 0.00 5.00 525.00 خصم\n"
              " 0.00 0.00 525.00 الرصيد في 2026/11/06\n");
    EXPECT_EQ(statement.debits().text() + " " + statement.credits().text(), "505.00 80.00");
    AccountStatement later = of(7, {2026, 11, 6}, {2026, 11, 6});
    ASSERT_FALSE(later.show());
    EXPECT_EQ(later.brought_forward().text(), "570.00");
    EXPECT_FALSE(later.check_arrears());
    EXPECT_EQ(office.services.prompts.last(), "توجد متأخرات بمبلغ 525.00");
}

// Amounts of another program with three decimals, and more digits than the scratch table's amounts hold:
// 100 + 10.005 + 10.005 = 120.01, + 10.005 = 130.015, + 200000.01 = 200130.025.
TEST_F(Statement, PeriodsMeetToThePiastre) {
    invoice(1, 0, "10.005", "2026/11/04");
    invoice(2, 0, "10.005", "2026/11/04");
    invoice(3, 0, "10.005", "2026/11/05");
    voucher(1, 1, "4", "200000.01", "2026/11/06");
    struct Period {
        int from;
        int to;
        const char* forward;
        const char* closing;
    };
    for (const Period& period : {Period{4, 4, "100.00", "120.01"},
                                 {5, 5, "120.01", "130.02"},
                                 {6, 6, "130.02", "200130.03"},
                                 {4, 6, "100.00", "200130.03"},
                                 {7, 9, "200130.03", "200130.03"}}) {
        AccountStatement statement = of(7, {2026, 11, period.from}, {2026, 11, period.to});
        ASSERT_FALSE(statement.show());
        EXPECT_EQ(statement.brought_forward().text(), period.forward);
        EXPECT_EQ(statement.closing().text(), period.closing);
    }
}

TEST_F(Statement, ArrearsGoByWhatIsDue) {
    struct Case {
        const char* due;
        const char* message;
    };
    for (const Case& check : {Case{"130", "لا توجد متأخرات"},
                              {"129.99", "توجد متأخرات بمبلغ 0.01"},
                              {"40", "توجد متأخرات بمبلغ 90.00"}}) {
        office.shop.sql("delete from sales");
        office.shop.sql("delete from vencuspay");
        invoice(1, 0, "30", "2026/11/21");
        voucher(2, 1, "1", "500", "2026/11/21");
        office.shop.sql(std::string("update vencuspay set quan1 = ") + check.due);
        AccountStatement statement = of(7, {2026, 11, 21}, {2026, 11, 21});
        EXPECT_FALSE(statement.check_arrears());
        EXPECT_EQ(office.services.prompts.last(), check.message);
    }
}

TEST_F(Statement, Refusals) {
    struct Case {
        std::optional<std::int64_t> customer;
        common::Date end;
        std::string_view field;
        std::string_view text;
    };
    const Case cases[] = {{7, {2026, 11, 19}, "statement_start", message::end_before_start},
                          {99, {2026, 11, 21}, "statement_customer", common::message::no_such_customer},
                          {{}, {2026, 11, 21}, "statement_customer", message::enter_customer}};
    for (const Case& refused : cases) {
        AccountStatement statement = of(7, {2026, 11, 20}, refused.end);
        statement.fields.customer = refused.customer;
        for (const auto& refusal : {statement.show(), statement.check_arrears()}) {
            ASSERT_TRUE(refusal) << refused.text;
            EXPECT_EQ(refusal->field, refused.field);
            EXPECT_EQ(refusal->text, refused.text);
        }
        EXPECT_TRUE(statement.rows().empty());
    }
}

// A restaurant that buys every hour: its statement is ready within a second of processor time.
TEST_F(Statement, TwentyThousandMovementsShowWithinASecond) {
    invoice(1, 0, "10.25", "2026/11/05");
    voucher(2, 1, "A1", "10", "2026/11/06");
    for (int pairs = 1; pairs < 10000; pairs *= 2) {
        const std::string rest = std::to_string(std::min(pairs, 10000 - pairs));
        const std::string by = std::to_string(pairs);
        office.shop.sql("insert into sales (pnum,ctype,ptot,[date],vcode,stcode) select top " + rest +
                        " pnum + " + by + ",ctype,ptot,[date],vcode,stcode from sales");
        office.shop.sql(
            "insert into vencuspay (chkno,ptype,[type],quan,quan1,[date],vcode,ztype) select top " + rest +
            " chkno,ptype,[type],quan,quan1,[date],vcode,ztype from vencuspay");
    }
    AccountStatement statement = of(7, {2026, 11, 5}, {2026, 11, 30});
    const std::clock_t before = std::clock();
    ASSERT_FALSE(statement.show());
    const double seconds = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    RecordProperty("seconds", std::to_string(seconds));
    EXPECT_LT(seconds, 1.0);
    EXPECT_EQ(statement.rows().size(), 20002U);
    EXPECT_EQ(statement.closing().text(), "2600.00");
    EXPECT_EQ(statement.rows()[10000].balance.text(), "102600.00");
}

// Random movements of customer 7 and vendor 3 in November, with an independent ledger of them in hundredths.
class Books : public Statement {
  protected:
    void begin(unsigned seed) {
        random.seed(seed);
        count_discounts_from("1900/01/01");
        for (const char* statement :
             {"delete from sales", "delete from vencuspay",
              "update custdata set copen = 100, cacc = 100 where ccode = 7", "update vendata set vacc = 900"})
            office.shop.sql(statement);
        opening = 10000;
        vendor = 90000;
        days.fill(0);
        written.clear();
    }
    int pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random); }
    static std::string text(long hundredths) { return common::Amount::of_hundredths(hundredths).text(); }
    long& of_day(const common::Date& date) { return days[static_cast<std::size_t>(date.day)]; }

    // Writes the rows that saving an invoice or a return writes.
    void sell_or_take_back(int number, long amount, const common::Date& date) {
        const bool back = pick(0, 2) == 0;
        const long discount = pick(0, 1) == 0 ? 0 : pick(0, static_cast<int>(amount));
        invoice(number, back ? 2 : 0, text(amount), common::date_text(date), 7, "null", text(discount));
        office.shop.sql(std::string("update custdata set cacc = cacc ") + (back ? "- " : "+ ") +
                        text(amount - discount) + " where ccode = 7");
        of_day(date) += back ? discount - amount : amount - discount;
    }
    void receive_directly(long amount, const common::Date& date) {
        write_direct_receipt(office.shop.connection(), office.session, office.services.all(), 7, date,
                             common::Amount::of_hundredths(amount));
        of_day(date) -= amount;
    }
    void change_opening(long amount) {
        AccountCustomer card(office.shop.connection());
        ASSERT_FALSE(card.open(CardMode::edit, 7));
        card.card.opening = text(amount);
        card.card.is_credit = pick(0, 1) == 0;
        ASSERT_FALSE(card.save());
        opening = card.card.is_credit ? -amount : amount;
    }
    void edit_voucher(long amount) {
        if (written.empty()) return;
        Written& edited = written[static_cast<std::size_t>(pick(0, static_cast<int>(written.size()) - 1))];
        Voucher voucher(edited.kind, office.shop.connection(), office.session, office.services.all());
        ASSERT_FALSE(voucher.open_edit(edited.key));
        voucher.set_amount(text(amount));
        ASSERT_FALSE(voucher.save());
        (edited.key.party_kind == PartyKind::vendor ? vendor : of_day(edited.key.date)) +=
            (amount - edited.key.amount.hundredths()) * edited.effect;
        edited.key.amount = common::Amount::of_hundredths(amount);
    }
    void add_voucher(int number, long amount, const common::Date& date) {
        const auto kind = pick(0, 1) == 0 ? VoucherKind::receipt : VoucherKind::payment;
        const PartyKind party_kind = pick(0, 1) == 0 ? PartyKind::vendor : PartyKind::customer;
        const bool to_vendor = party_kind == PartyKind::vendor;
        Voucher voucher(kind, office.shop.connection(), office.session, office.services.all());
        voucher.open_new();
        voucher.choose_party_kind(party_kind);
        voucher.choose_party(to_vendor ? 3 : 7);
        voucher.set_amount(text(amount));
        voucher.fields.date = date;
        voucher.fields.number = "N" + std::to_string(number);
        if (pick(0, 1) == 0) {
            voucher.method = Method::cheque;
            voucher.fields.bank = 3;
        }
        ASSERT_FALSE(voucher.save());
        const long effect = (kind == VoucherKind::payment) == !to_vendor ? 1 : -1;
        (to_vendor ? vendor : of_day(date)) += effect * amount;
        written.push_back({kind,
                           {party_kind, to_vendor ? 3 : 7, date, common::Amount::of_hundredths(amount),
                            voucher.fields.number},
                           effect});
    }
    void do_something(int number) {
        const long amount = pick(1, 90000);
        const common::Date date{2026, 11, pick(1, 30)};
        switch (pick(0, 5)) {
            case 0:
                return sell_or_take_back(number, amount, date);
            case 1:
                return receive_directly(amount, date);
            case 2:
                return change_opening(amount);
            case 3:
                return edit_voucher(amount);
            default:
                return add_voucher(number, amount, date);
        }
    }
    // What the customer owes before a day.
    long owed_before(int day) const { return std::accumulate(days.begin(), days.begin() + day, opening); }

    struct Written {
        VoucherKind kind;
        VoucherKey key;
        long effect;
    };
    std::mt19937 random;
    long opening = 0;
    long vendor = 0;
    std::array<long, 31> days{};  // the customer's debits less credits by day
    std::vector<Written> written;
};

// After any sequence of vouchers, edits, invoices and opening balances, the running balances are the sums of
// them all, and the statement agrees for any period.
TEST_F(Books, BalancesEqualIndependentSums) {
    for (unsigned round = 0; round < 25 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        begin(round);
        for (int step = 0; step < 30; ++step)
            do_something(step);
        EXPECT_EQ(common::format_amount(office.customer_balance(7)), text(owed_before(31)));
        EXPECT_EQ(common::format_amount(office.vendor_balance(3)), text(vendor));

        const int from = pick(1, 30);
        const int to = pick(from, 30);
        AccountStatement statement = of(7, {2026, 11, from}, {2026, 11, to});
        ASSERT_FALSE(statement.show());
        EXPECT_EQ(statement.brought_forward().hundredths(), owed_before(from));
        EXPECT_EQ(statement.closing().hundredths(), owed_before(to + 1));
        EXPECT_EQ(statement.brought_forward() + statement.debits() - statement.credits(),
                  statement.closing());
    }
}

}  // namespace
}  // namespace accounts
