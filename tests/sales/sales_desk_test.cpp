// The sales desk as a whole: opening, a sale from the first scan to the drawer, what errors leave behind.
#include "sales/sales_desk.h"

#include "sales/counter.h"
#include "sales/messages.h"
#include "support/faulty_connection.h"

namespace {

namespace column = sales::column;
namespace message = sales::message;
using sales::BeginSave;
using sales::KindOption;
using sales::PaymentOption;
using sales::SaveOutcome;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(SalesDesk, OpensWithItsListsAndDefaults) {
    struct Case {
        const char* main_p;
        int level;
    };
    for (const Case& c : {Case{"null", 2}, Case{"0", 2}, Case{"1", 3}}) {
        Counter counter;
        counter.shop.sql("insert into bankdata (bcode,bname,mob) select 4,N'محفظة',1");
        counter.shop.sql("insert into news (ncode,nname) select 1,N'عرض اليوم'");
        counter.shop.sql(std::string("update basic set main_p = ") + c.main_p);
        auto& desk = counter.desk;
        ASSERT_TRUE(desk.Open());
        EXPECT_EQ(desk.invoice().price_level, c.level);
        EXPECT_EQ(desk.invoice().date, (common::Date{2026, 11, 21}));
        EXPECT_EQ(desk.clock_text(), "10:42 AM");
        desk.tick();
        EXPECT_EQ(desk.clock_text(), "10:42:00 AM");
        EXPECT_EQ(sales::kind_caption(desk.invoice().kind, desk.invoice().payment), "بيع نقدي");
        EXPECT_EQ(std::to_string(desk.invoice().number), "1");
        EXPECT_EQ(desk.shift_number(), 14);
        EXPECT_EQ(desk.lists().banks.size(), 1u) << "mobile wallets are no banks";
        EXPECT_EQ(desk.lists().user_filter.back().name, "الكل");
        EXPECT_THAT(desk.news(), ElementsAre("عرض اليوم"));
        ASSERT_TRUE(desk.header().SwitchPayment(PaymentOption::card));
        EXPECT_EQ(desk.invoice().card.bank_code, 3) << "the first bank is preselected";
    }
}

TEST(SalesDesk, AMissingTableIsToldAtOpening) {
    Counter counter;
    counter.shop.sql("drop table inv_d");
    EXPECT_FALSE(counter.desk.Open());
    EXPECT_THAT(counter.said(), ElementsAre(testing::StartsWith(message::action_failed)));
}

// An invoice has the date of its saving, whenever it was begun, unless a day was chosen.
TEST(SalesDesk, ASaleIsOfTheDayOfItsSaving) {
    struct Case {
        const char* what;
        int step;  // before which midnight passes: 0 the scan, 1 saving, 2 confirming the payment
        bool chosen;
        const char* date;
    };
    const Case cases[] = {{"left on overnight", 0, false, "2026/11/22"},
                          {"rung up before midnight", 1, false, "2026/11/22"},
                          {"paid at midnight", 2, false, "2026/11/22"},
                          {"a day was chosen", 1, true, "2026/11/19"}};
    for (const Case& c : cases) {
        Counter counter;
        auto& desk = counter.open();
        counter.services.clock.moment = {{2026, 11, 21}, {23, 59, 59, 0}};
        desk.tick();
        const auto midnight_before = [&](int step) {
            if (step != c.step) return;
            counter.services.clock.moment = {{2026, 11, 22}, {0, 0, 0, 0}};
            desk.tick();
        };
        if (c.chosen) desk.header().choose_date({2026, 11, 19});
        midnight_before(0);
        ASSERT_TRUE(counter.enter("6221000400012")) << c.what;
        midnight_before(1);
        ASSERT_EQ(desk.checkout().begin_save(), BeginSave::ask_payment) << c.what;
        midnight_before(2);
        ASSERT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::saved) << c.what;
        EXPECT_EQ(counter.shop.cell("select convert(varchar,[date],111) from sales"), c.date) << c.what;
        EXPECT_EQ(desk.invoice().date, (common::Date{2026, 11, 22})) << "the next one is of today";
    }
}

TEST(SalesDesk, ACashSaleFromScanToDrawer) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("6221000400036"));
    ASSERT_TRUE(counter.enter("2000123004500"));
    EXPECT_EQ(counter.services.devices.files["xx.txt"], "\x1F\x11Total  150.00       Change  0.00");
    ASSERT_EQ(desk.checkout().begin_save(), BeginSave::ask_payment);
    ASSERT_NE(desk.checkout().payment(), nullptr);
    desk.checkout().payment()->type_paid("200");
    desk.checkout().payment()->choose_worker(1);
    EXPECT_EQ(counter.services.devices.ports.count("com1"), 0u) << "the drawer opened before the save";
    ASSERT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::saved);
    EXPECT_EQ(counter.services.devices.ports["com1"], "\x07");
    EXPECT_EQ(counter.shop.number("select ptot from sales where pnum = 1"), 150);
    EXPECT_EQ(counter.shop.number("select wcode from sales where pnum = 1"), 1);
    ASSERT_TRUE(desk.last_receipt().has_value());
    EXPECT_EQ(desk.last_receipt()->invoice.number, 1);
    EXPECT_EQ(desk.last_receipt()->payment.change, common::Amount(50));
    EXPECT_THAT(desk.invoice().lines, IsEmpty());
    EXPECT_EQ(std::to_string(desk.invoice().number), "2");
    EXPECT_EQ(desk.sale().figures.net, "0.00");
    // A second press of the key has nothing to save.
    EXPECT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::refused);
    EXPECT_EQ(counter.shop.number("select count(*) from sales"), 1);
}

TEST(SalesDesk, OnlyCashOpensTheDrawer) {
    struct Case {
        PaymentOption payment;
        BeginSave begin;
        std::string drawer;
    };
    for (const Case& c : {Case{PaymentOption::account, BeginSave::save_now, ""},
                          Case{PaymentOption::cash, BeginSave::ask_payment, "\x07"},
                          Case{PaymentOption::card, BeginSave::save_now, ""},
                          Case{PaymentOption::tips, BeginSave::ask_payment, "\x07"}}) {
        SCOPED_TRACE(static_cast<int>(c.payment));
        Counter counter;
        auto& desk = counter.open();
        desk.header().SwitchPayment(c.payment);
        desk.header().choose_customer(7);
        desk.header().choose_tips_receiver(5);
        desk.header().enter_card("x", "77");
        ASSERT_TRUE(counter.enter("400"));
        EXPECT_EQ(desk.checkout().begin_save(), c.begin);
        const common::Amount net = desk.invoice().net();
        EXPECT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::saved) << counter.services.prompts.last();
        if (c.payment == PaymentOption::card) {
            EXPECT_EQ(desk.last_receipt()->payment.paid, net);
        }
        EXPECT_EQ(counter.services.devices.ports["com1"], c.drawer);
        EXPECT_EQ(desk.invoice().payment, PaymentOption::cash) << "the next invoice starts in cash";
    }
}

TEST(SalesDesk, RefusesToBeginWhatCannotBeSaved) {
    Counter counter;
    auto& desk = counter.open();
    EXPECT_EQ(desk.checkout().begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.said(), ElementsAre(std::string(sales::message::empty_invoice)));
    ASSERT_TRUE(counter.enter("*"));
    EXPECT_EQ(desk.checkout().begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.said(), ElementsAre("أدخل كمية الصنف صنف عام"));
    ASSERT_TRUE(desk.lines().quick_quantity("1"));
    EXPECT_EQ(desk.checkout().begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.said(), ElementsAre("أدخل سعر الصنف صنف عام"));
    ASSERT_TRUE(desk.lines().commit_edit(0, column::price, "5"));
    ASSERT_EQ(desk.checkout().begin_save(), BeginSave::ask_payment);
    counter.shop.sql("update shift set e_date = '2026/11/21 10:00:00'");
    EXPECT_EQ(desk.checkout().begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.said(), ElementsAre(std::string(sales::message::no_shift)));
    EXPECT_EQ(desk.checkout().payment(), nullptr);
    EXPECT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::refused);
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
}

TEST(SalesDesk, CancelledPaymentKeepsTheInvoice) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("400"));
    ASSERT_EQ(desk.checkout().begin_save(), BeginSave::ask_payment);
    desk.checkout().cancel_payment();
    EXPECT_EQ(counter.services.devices.files["xx.txt"], "\x1F\x11Welcome to Morvin");
    EXPECT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::refused);
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
}

TEST(SalesDesk, CancellingAsksAndClears) {
    struct Case {
        bool (sales::Checkout::*cancel)();
        std::string question;
    };
    for (const Case& c : {Case{&sales::Checkout::CancelInvoice, "هل تريد الغاء البون ؟"},
                          Case{&sales::Checkout::CancelRecord, "هل تريد إلغاء هذا السجل ؟"}}) {
        SCOPED_TRACE(c.question);
        // Lines: 1, net: 3.80; they go from the screen and none of them is recorded.
        const std::string what = "\nعدد السطور 1 · الصافي 3.80\nتمحى من الشاشة ولا يسجل منها شيء";
        Counter counter;
        counter.shop.sql("update basic set main_p = 1");
        auto& desk = counter.open();
        desk.header().choose_price_level(5);
        desk.header().SwitchPayment(PaymentOption::card);
        ASSERT_TRUE(counter.enter("400"));
        ASSERT_TRUE(desk.lines().CommitDiscountPercent("5"));
        EXPECT_FALSE((desk.checkout().*c.cancel)());
        EXPECT_EQ(desk.invoice().lines.size(), 1u);
        counter.answer({true});
        EXPECT_TRUE((desk.checkout().*c.cancel)());
        EXPECT_THAT(counter.asked(), ElementsAre(c.question + what, c.question + what));
        EXPECT_THAT(desk.invoice().lines, IsEmpty());
        EXPECT_EQ(desk.sale().figures.total, "0.00");
        EXPECT_EQ(desk.sale().figures.discount_percent, "0.00");
        EXPECT_EQ(desk.invoice().price_level, 3);
        EXPECT_EQ(desk.invoice().kind, KindOption::sale);
        EXPECT_EQ(desk.invoice().payment, PaymentOption::cash);
        EXPECT_EQ(counter.shop.number("select count(*) from sales"), 0);
    }
}

TEST(SalesDesk, ARecalledReceiptIsLookedAtReprintedAndReturned) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("400"));
    ASSERT_TRUE(desk.lines().commit_edit(0, column::quantity, "3"));
    ASSERT_TRUE(counter.sell()) << counter.services.prompts.last();
    counter.printer.printed.clear();

    for (const char* number : {"77", "١٢٣٤٥٦٧٨٩٠١٢٣٤٥٦٧٨٩٠"}) {
        EXPECT_FALSE(desk.receipts().recall(number));
        EXPECT_THAT(counter.said(), ElementsAre("البون غير موجود")) << number;
    }
    for (const char* number : {"", "x", "-1", "1.5", "1; drop table sales"}) {
        EXPECT_FALSE(desk.receipts().recall(number));
        EXPECT_THAT(counter.said(), ElementsAre(std::string(message::wrong_receipt_number))) << number;
    }
    ASSERT_TRUE(desk.receipts().recall("١"));
    EXPECT_TRUE(desk.sale().recalled.has_value());
    EXPECT_EQ(desk.sale().figures.net, "15.00");
    EXPECT_TRUE(desk.receipts().reprint());
    ASSERT_EQ(counter.printer.printed.size(), 1u);
    EXPECT_EQ(counter.printer.printed[0].second, printing::Form::reprint);
    EXPECT_EQ(counter.printer.printed[0].first.number, 1);
    // It is saved again only after a question.
    EXPECT_EQ(desk.checkout().begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.asked(), ElementsAre(std::string(message::save_as_new)));

    ASSERT_TRUE(desk.receipts().start_return());
    EXPECT_EQ(desk.invoice().kind, KindOption::return_);
    EXPECT_FALSE(desk.lines().commit_edit(0, column::quantity, "4")) << "only three were sold";
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::quantity_not_allowed)));
    // A quantity that was set to one can be scanned back to the three that were sold, but no further.
    ASSERT_TRUE(desk.lines().commit_edit(0, column::quantity, "1"));
    for (const char* quantity : {"2.000", "3.000", "3.000"}) {
        counter.answer({true});
        counter.enter("400");
        EXPECT_EQ(counter.cell(0, column::quantity), quantity);
    }
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
    EXPECT_THAT(counter.said(), ElementsAre("الكمية لا تسمح"));
    counter.asked();
    ASSERT_TRUE(counter.sell()) << counter.services.prompts.last();
    EXPECT_EQ(counter.shop.number("select sum(quan) from stk where icode = 400"), 240);

    // The second field adds to the receipt, which is then an edited one.
    ASSERT_TRUE(desk.receipts().recall("1"));
    EXPECT_TRUE(desk.lines().EnterItemForRecalled(sales::read_entry("410")));
    EXPECT_TRUE(counter.enter("440"));
    EXPECT_EQ(desk.invoice().lines.size(), 3u);
    counter.asked();
    counter.answer({true});
    ASSERT_TRUE(counter.sell()) << counter.services.prompts.last();
    EXPECT_EQ(desk.last_receipt()->invoice.number, 2);
    EXPECT_TRUE(desk.receipts().reprint()) << "the last one, as none is on the screen";

    // The next customer's scan replaces a receipt that is only looked at. Midnight leaves that its day.
    ASSERT_TRUE(desk.receipts().recall("1"));
    const common::Date day = desk.invoice().date;
    counter.services.clock.moment.date.day += 1;
    desk.tick();
    EXPECT_EQ(desk.invoice().date, day);
    ASSERT_TRUE(counter.enter("100"));
    EXPECT_FALSE(desk.sale().recalled.has_value());
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
    EXPECT_EQ(std::to_string(desk.invoice().number), "3");
}

TEST(SalesDesk, ARecalledReceiptSavedAgainIsTodays) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("100"));
    ASSERT_TRUE(counter.sell()) << counter.services.prompts.last();
    counter.services.clock.moment.date = {2026, 11, 22};
    counter.shop.sql("delete from stk where icode = 100 and stcode = 1 and edate < '2027/06/01'");
    ASSERT_TRUE(desk.receipts().recall("1"));
    EXPECT_EQ(desk.invoice().date, (common::Date{2026, 11, 21}));
    counter.answer({true});
    ASSERT_TRUE(counter.sell()) << counter.services.prompts.last();
    EXPECT_EQ(counter.shop.cell("select convert(varchar,date,111) from sales where pnum = 2"), "2026/11/22");
    // Its piece came from the batch that is left, not from the one the first receipt was sold from.
    EXPECT_EQ(counter.shop.cell("select convert(varchar,edate,111) from saledata where pnum = 2"),
              "2027/06/01");

    // A recalled return is saved again only after a question, too.
    ASSERT_TRUE(desk.header().SwitchKind(KindOption::return_));
    ASSERT_TRUE(counter.enter("100"));
    ASSERT_TRUE(counter.sell()) << counter.services.prompts.last();
    ASSERT_TRUE(desk.header().SwitchKind(KindOption::return_));
    ASSERT_TRUE(desk.receipts().recall("1"));
    counter.asked();
    EXPECT_EQ(desk.checkout().begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.asked(), ElementsAre(std::string(message::save_as_new)));
}

TEST(SalesDesk, ARecalledAccountReceiptWithAPermitIsSavedAsNew) {
    Counter counter;
    auto& desk = counter.open();
    for (int receipt = 1; receipt <= 2; ++receipt) {
        if (receipt == 1) {
            desk.header().SwitchPayment(PaymentOption::account);
            desk.header().choose_customer(7);
            desk.header().enter_permit(true, "م-15");
            ASSERT_TRUE(counter.enter("400"));
        } else {
            desk.header().SwitchPayment(PaymentOption::account);
            ASSERT_TRUE(desk.receipts().recall("1"));
            counter.answer({true});
        }
        ASSERT_EQ(desk.checkout().begin_save(), BeginSave::save_now) << counter.services.prompts.last();
        ASSERT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::saved) << counter.services.prompts.last();
    }
    EXPECT_EQ(counter.shop.number("select count(*) from sales where perm_no = N'م-15'"), 2);
    EXPECT_EQ(counter.shop.number("select max(pnum) from sales"), 2);
}

TEST(SalesDesk, AnErrorBelowIsToldAndLeavesTheInvoice) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("400"));
    counter.shop.sql("drop table stk");
    EXPECT_FALSE(counter.enter("410"));
    EXPECT_THAT(counter.said(), ElementsAre(testing::StartsWith(message::action_failed)));
    EXPECT_EQ(counter.services.log.lines.size(), 1u);
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
    EXPECT_EQ(desk.sale().figures.net, "5.00");
    EXPECT_FALSE(desk.lines().commit_edit(0, column::quantity, "5"));
    EXPECT_EQ(counter.cell(0, column::quantity), "1.000");
}

// Counts the rows that statements give.
class RowCounter final : public test::FaultyConnection {
  public:
    using FaultyConnection::FaultyConnection;
    Outcome run(std::string_view statement, const std::vector<database::Value>& values) override {
        Outcome outcome = FaultyConnection::run(statement, values);
        rows += outcome.result.size();
        return outcome;
    }
    std::size_t rows = 0;
};

// Fifteen years of shifts on a drawer.
TEST(SalesDesk, ASaleDoesNotReadTheShiftsOfThePast) {
    constexpr int shifts = 5475;
    Counter counter;
    counter.shop.sql("update shift set scode = " + std::to_string(shifts));
    for (int number = 1; number < shifts; ++number)
        counter.connection().execute(
            "insert into shift (stcode,cash_no,scode,s_date,e_date) values "
            "(1,1,?,'2020/01/01','2020/01/01 08:00:00')",
            {std::int64_t{number}});
    RowCounter rows(counter.connection());
    sales::SalesDesk desk(rows, counter.session, counter.services.all(), counter.printer);
    ASSERT_TRUE(desk.Open());
    EXPECT_EQ(desk.shift_number(), shifts);
    rows.rows = 0;
    ASSERT_TRUE(desk.lines().EnterItem(sales::read_entry("400")));
    ASSERT_EQ(desk.checkout().begin_save(), BeginSave::ask_payment);
    ASSERT_EQ(desk.checkout().SaveInvoice(), SaveOutcome::saved);
    EXPECT_LT(rows.rows, 50U);
    EXPECT_EQ(counter.shop.number("select [Shift] from sales"), shifts);
}

// The number of the store could not be read: neither this invoice nor the next one sells from it.
TEST(SalesDesk, AStoreThatWasRefusedNeverTakesEffect) {
    Counter counter;
    test::FaultyConnection faulty(counter.connection());
    sales::SalesDesk desk(faulty, counter.session, counter.services.all(), counter.printer);
    ASSERT_TRUE(desk.Open());
    faulty.fail_at(1, test::FaultyConnection::Fault::passing);
    desk.header().choose_store(2);
    ASSERT_TRUE(faulty.has_failed());
    EXPECT_THAT(counter.said(), ElementsAre(testing::StartsWith(message::action_failed)));
    EXPECT_EQ(desk.invoice().store, 1);
    counter.answer({true});
    ASSERT_TRUE(desk.checkout().CancelInvoice());
    EXPECT_EQ(desk.invoice().store, 1);
    desk.header().choose_store(2);
    counter.answer({true});
    ASSERT_TRUE(desk.checkout().CancelInvoice());
    EXPECT_EQ(desk.invoice().store, 2) << "one that was accepted stays";
}

// Prompts of a window whose event loop runs on while a box is open.
class NestedPrompts final : public common::Prompts {
  public:
    void message(std::string_view, common::Icon) override {}
    common::Answer choose(std::string_view, const common::Choices&, common::Icon) override {
        if (during) during();
        return common::Answer::yes;
    }
    std::function<void()> during;
};

TEST(SalesDesk, AnActionInsideAnotherIsIgnored) {
    Counter counter;
    NestedPrompts prompts;
    sales::SalesDesk desk(counter.connection(), counter.session,
                          {prompts, counter.services.clock, counter.services.devices, counter.services.log},
                          counter.printer);
    const auto enter = [&](std::string_view text) { return desk.lines().EnterItem(sales::read_entry(text)); };
    ASSERT_TRUE(desk.Open());
    ASSERT_TRUE(enter("400"));
    bool nested = true;
    prompts.during = [&] { nested = enter("410"); };
    EXPECT_TRUE(enter("400"));
    EXPECT_FALSE(nested);
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
    EXPECT_EQ(desk.invoice().cells(0)[column::quantity], "2.000");
}

}  // namespace
