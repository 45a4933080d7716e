// The screen as a whole: opening, a sale from the first scan to the drawer, what errors leave behind.
#include "sales/sales_screen.h"

#include <chrono>

#include "sales/counter.h"
#include "sales/messages.h"
#include "sales/saving_messages.h"

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

TEST(SalesScreen, OpensWithItsListsAndDefaults) {
    struct Case {
        const char* main_p;
        int level;
    };
    for (const Case& c : {Case{"null", 2}, Case{"0", 2}, Case{"1", 3}}) {
        Counter counter;
        counter.shop.sql("insert into bankdata (bcode,bname,mob) select 4,N'محفظة',1");
        counter.shop.sql("insert into news (ncode,nname) select 1,N'عرض اليوم'");
        counter.shop.sql(std::string("update basic set main_p = ") + c.main_p);
        auto& screen = counter.screen;
        ASSERT_TRUE(screen.Open());
        EXPECT_EQ(screen.invoice().price_level, c.level);
        EXPECT_EQ(screen.invoice().date, (common::Date{2026, 11, 21}));
        EXPECT_EQ(screen.clock_text(), "10:42 AM");
        screen.tick();
        EXPECT_EQ(screen.clock_text(), "10:42:00 AM");
        EXPECT_EQ(screen.kind_label(), "بيع نقدي");
        EXPECT_EQ(screen.number_text(), "1");
        EXPECT_EQ(screen.shift_number(), 14);
        EXPECT_EQ(screen.lists().banks.size(), 1u) << "mobile wallets are no banks";
        EXPECT_EQ(screen.lists().user_filter.back().name, "الكل");
        EXPECT_THAT(screen.news(), ElementsAre("عرض اليوم"));
        ASSERT_TRUE(screen.SwitchPayment(PaymentOption::card));
        EXPECT_EQ(screen.invoice().card.bank_code, 3) << "the first bank is preselected";
    }
}

TEST(SalesScreen, AMissingTableIsToldAtOpening) {
    Counter counter;
    counter.shop.sql("drop table inv_d");
    EXPECT_FALSE(counter.screen.Open());
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::action_failed)));
}

// Date and time of an invoice are of one moment, whenever it was begun, unless a day was chosen.
TEST(SalesScreen, ASaleIsOfTheDayOfItsSaving) {
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
        auto& screen = counter.open();
        counter.services.clock.moment = {{2026, 11, 21}, {23, 59, 59, 0}};
        screen.tick();
        const auto midnight_before = [&](int step) {
            if (step != c.step) return;
            counter.services.clock.moment = {{2026, 11, 22}, {0, 0, 0, 0}};
            screen.tick();
        };
        if (c.chosen) screen.choose_date({2026, 11, 19});
        midnight_before(0);
        ASSERT_TRUE(screen.EnterItem("6221000400012")) << c.what;
        midnight_before(1);
        ASSERT_EQ(screen.begin_save(), BeginSave::ask_payment) << c.what;
        midnight_before(2);
        ASSERT_EQ(screen.SaveInvoice(), SaveOutcome::saved) << c.what;
        EXPECT_EQ(counter.shop.cell("select convert(varchar,[date],111) from sales"), c.date) << c.what;
        EXPECT_EQ(screen.invoice().date, (common::Date{2026, 11, 22})) << "the next one is of today";
    }
}

TEST(SalesScreen, ACashSaleFromScanToDrawer) {
    Counter counter;
    auto& screen = counter.open();
    ASSERT_TRUE(screen.EnterItem("6221000400036"));
    ASSERT_TRUE(screen.EnterItem("2000123004500"));
    EXPECT_EQ(screen.display_text(), "Total  150.00       Change  0.00");
    ASSERT_EQ(screen.begin_save(), BeginSave::ask_payment);
    ASSERT_NE(screen.payment(), nullptr);
    screen.payment()->type_paid("200");
    screen.payment()->choose_worker(1);
    EXPECT_EQ(counter.services.devices.ports.count("com1"), 0u) << "the drawer opened before the save";
    ASSERT_EQ(screen.SaveInvoice(), SaveOutcome::saved);
    EXPECT_EQ(counter.services.devices.ports["com1"], "\x07");
    EXPECT_EQ(counter.shop.number("select ptot from sales where pnum = 1"), 150);
    EXPECT_EQ(counter.shop.number("select wcode from sales where pnum = 1"), 1);
    ASSERT_TRUE(screen.last_receipt().has_value());
    EXPECT_EQ(screen.last_receipt()->invoice.number, 1);
    EXPECT_EQ(screen.last_receipt()->payment.change, 50);
    EXPECT_THAT(screen.invoice().lines, IsEmpty());
    EXPECT_EQ(screen.number_text(), "2");
    EXPECT_EQ(screen.figures().net, "0.00");
    // The key pressed once more has nothing to save.
    EXPECT_EQ(screen.SaveInvoice(), SaveOutcome::refused);
    EXPECT_EQ(counter.shop.number("select count(*) from sales"), 1);
}

TEST(SalesScreen, OnlyCashOpensTheDrawer) {
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
        auto& screen = counter.open();
        screen.SwitchPayment(c.payment);
        screen.choose_customer(7);
        screen.choose_tips_receiver(5);
        screen.enter_card("x", "77");
        ASSERT_TRUE(screen.EnterItem("400"));
        EXPECT_EQ(screen.begin_save(), c.begin);
        EXPECT_EQ(screen.SaveInvoice(), SaveOutcome::saved) << counter.services.prompts.last();
        EXPECT_EQ(counter.services.devices.ports["com1"], c.drawer);
        EXPECT_EQ(screen.invoice().payment, PaymentOption::cash) << "the next invoice starts in cash";
    }
}

TEST(SalesScreen, RefusesToBeginWhatCannotBeSaved) {
    Counter counter;
    auto& screen = counter.open();
    EXPECT_EQ(screen.begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.said(), ElementsAre(std::string(sales::saving_message::empty_invoice)));
    ASSERT_TRUE(screen.EnterItem("*"));
    EXPECT_EQ(screen.begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.said(), ElementsAre("ادخل كمية الصنف صنف عام"));
    ASSERT_TRUE(screen.quick_quantity("1"));
    EXPECT_EQ(screen.begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.said(), ElementsAre("ادخل سعر الصنف صنف عام"));
    ASSERT_TRUE(screen.commit_edit(0, column::price, "5"));
    counter.shop.sql("update shift set e_date = '2026/11/21 10:00:00'");
    EXPECT_EQ(screen.begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.said(), ElementsAre(std::string(sales::saving_message::no_shift)));
    EXPECT_EQ(screen.payment(), nullptr);
    EXPECT_EQ(screen.SaveInvoice(), SaveOutcome::refused);
    EXPECT_EQ(screen.invoice().lines.size(), 1u);
}

TEST(SalesScreen, CancelledPaymentKeepsTheInvoice) {
    Counter counter;
    auto& screen = counter.open();
    ASSERT_TRUE(screen.EnterItem("400"));
    ASSERT_EQ(screen.begin_save(), BeginSave::ask_payment);
    screen.cancel_payment();
    EXPECT_EQ(counter.services.devices.files["xx.txt"], "\x1F\x11Welcome to Morvin");
    EXPECT_EQ(screen.SaveInvoice(), SaveOutcome::refused);
    EXPECT_EQ(screen.invoice().lines.size(), 1u);
}

TEST(SalesScreen, CancellingAsksAndClears) {
    struct Case {
        bool (sales::SalesScreen::*cancel)();
        std::string question;
    };
    for (const Case& c : {Case{&sales::SalesScreen::CancelInvoice, "هل تريد الغاء البون ؟"},
                          Case{&sales::SalesScreen::CancelRecord, "هل تريد إلغاء هذا السجل ؟"}}) {
        SCOPED_TRACE(c.question);
        Counter counter;
        counter.shop.sql("update basic set main_p = 1");
        auto& screen = counter.open();
        screen.choose_price_level(5);
        screen.SwitchPayment(PaymentOption::card);
        ASSERT_TRUE(screen.EnterItem("400"));
        ASSERT_TRUE(screen.CommitDiscountPercent("5"));
        EXPECT_FALSE((screen.*c.cancel)());
        EXPECT_EQ(screen.invoice().lines.size(), 1u);
        counter.answer({true});
        EXPECT_TRUE((screen.*c.cancel)());
        EXPECT_THAT(counter.asked(), ElementsAre(c.question, c.question));
        EXPECT_THAT(screen.invoice().lines, IsEmpty());
        EXPECT_EQ(screen.figures().total, "0.00");
        EXPECT_EQ(screen.figures().discount_percent, "0.00");
        EXPECT_EQ(screen.invoice().price_level, 3);
        EXPECT_EQ(screen.invoice().kind, KindOption::sale);
        EXPECT_EQ(screen.invoice().payment, PaymentOption::cash);
        EXPECT_EQ(counter.shop.number("select count(*) from sales"), 0);
    }
}

TEST(SalesScreen, ARecalledReceiptIsLookedAtReprintedAndReturned) {
    Counter counter;
    auto& screen = counter.open();
    ASSERT_TRUE(screen.EnterItem("400"));
    ASSERT_TRUE(screen.commit_edit(0, column::quantity, "3"));
    ASSERT_EQ(screen.begin_save(), BeginSave::ask_payment);
    ASSERT_EQ(screen.SaveInvoice(), SaveOutcome::saved);
    counter.printer.printed.clear();

    for (const char* number : {"77", "١٢٣٤٥٦٧٨٩٠١٢٣٤٥٦٧٨٩٠"}) {
        EXPECT_FALSE(screen.recall(number));
        EXPECT_THAT(counter.said(), ElementsAre("البون غير موجود")) << number;
    }
    for (const char* number : {"", "x", "-1", "1.5", "1; drop table sales"}) {
        EXPECT_FALSE(screen.recall(number));
        EXPECT_THAT(counter.said(), ElementsAre(std::string(message::wrong_receipt_number))) << number;
    }
    ASSERT_TRUE(screen.recall("١"));
    EXPECT_TRUE(screen.recalled());
    EXPECT_EQ(screen.figures().net, "15.00");
    EXPECT_TRUE(screen.reprint());
    ASSERT_EQ(counter.printer.printed.size(), 1u);
    EXPECT_EQ(counter.printer.printed[0].second, printing::Form::reprint);
    EXPECT_EQ(counter.printer.printed[0].first.number, 1);
    // Saving it again takes a yes to a question.
    EXPECT_EQ(screen.begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.asked(), ElementsAre(std::string(message::save_as_new)));

    ASSERT_TRUE(screen.start_return());
    EXPECT_EQ(screen.invoice().kind, KindOption::return_);
    EXPECT_FALSE(screen.commit_edit(0, column::quantity, "4")) << "only three were sold";
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::quantity_not_allowed)));
    ASSERT_EQ(screen.begin_save(), BeginSave::ask_payment) << counter.services.prompts.last();
    ASSERT_EQ(screen.SaveInvoice(), SaveOutcome::saved);
    EXPECT_EQ(counter.shop.number("select sum(quan) from stk where icode = 400"), 240);

    // The second field adds to the receipt, which then is no longer only looked at.
    ASSERT_TRUE(screen.recall("1"));
    EXPECT_TRUE(screen.EnterItemForRecalled("410"));
    EXPECT_TRUE(screen.EnterItem("440"));
    EXPECT_EQ(screen.invoice().lines.size(), 3u);
    counter.asked();
    counter.answer({true});
    ASSERT_EQ(screen.begin_save(), BeginSave::ask_payment);
    ASSERT_EQ(screen.SaveInvoice(), SaveOutcome::saved);
    EXPECT_EQ(screen.last_receipt()->invoice.number, 2);

    // A receipt that is only looked at makes way for the next customer's scan.
    ASSERT_TRUE(screen.recall("1"));
    ASSERT_TRUE(screen.EnterItem("100"));
    EXPECT_FALSE(screen.recalled());
    EXPECT_EQ(screen.invoice().lines.size(), 1u);
    EXPECT_EQ(screen.number_text(), "3");
    counter.forbid({221});
    EXPECT_FALSE(screen.reprint());
}

TEST(SalesScreen, ARecalledReceiptSavedAgainIsTodays) {
    Counter counter;
    auto& screen = counter.open();
    ASSERT_TRUE(screen.EnterItem("100"));
    ASSERT_EQ(screen.begin_save(), BeginSave::ask_payment);
    ASSERT_EQ(screen.SaveInvoice(), SaveOutcome::saved);
    counter.services.clock.moment.date = {2026, 11, 22};
    counter.shop.sql("delete from stk where icode = 100 and stcode = 1 and edate < '2027/06/01'");
    ASSERT_TRUE(screen.recall("1"));
    EXPECT_EQ(screen.invoice().date, (common::Date{2026, 11, 21}));
    counter.answer({true});
    ASSERT_EQ(screen.begin_save(), BeginSave::ask_payment);
    ASSERT_EQ(screen.SaveInvoice(), SaveOutcome::saved);
    EXPECT_EQ(counter.shop.cell("select convert(varchar,date,111) from sales where pnum = 2"), "2026/11/22");
    // Its piece came from the batch that is left, not from the one the first receipt was sold from.
    EXPECT_EQ(counter.shop.cell("select convert(varchar,edate,111) from saledata where pnum = 2"),
              "2027/06/01");

    // A return looked at asks as well before it is saved a second time.
    ASSERT_TRUE(screen.SwitchKind(KindOption::return_));
    ASSERT_TRUE(screen.EnterItem("100"));
    ASSERT_EQ(screen.begin_save(), BeginSave::ask_payment);
    ASSERT_EQ(screen.SaveInvoice(), SaveOutcome::saved);
    ASSERT_TRUE(screen.SwitchKind(KindOption::return_));
    ASSERT_TRUE(screen.recall("1"));
    counter.asked();
    EXPECT_EQ(screen.begin_save(), BeginSave::refused);
    EXPECT_THAT(counter.asked(), ElementsAre(std::string(message::save_as_new)));
}

TEST(SalesScreen, AnErrorBelowIsToldAndLeavesTheInvoice) {
    Counter counter;
    auto& screen = counter.open();
    ASSERT_TRUE(screen.EnterItem("400"));
    counter.shop.sql("drop table stk");
    EXPECT_FALSE(screen.EnterItem("410"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::action_failed)));
    EXPECT_EQ(counter.services.log.lines.size(), 1u);
    EXPECT_EQ(screen.invoice().lines.size(), 1u);
    EXPECT_EQ(screen.figures().net, "5.00");
    EXPECT_FALSE(screen.commit_edit(0, column::quantity, "5"));
    EXPECT_EQ(counter.cell(0, column::quantity), "1.000");
    EXPECT_FALSE(screen.busy());
}

// Prompts of a face whose event loop runs on while a box is open.
class NestedPrompts final : public common::Prompts {
  public:
    void message(std::string_view, common::Icon) override {}
    bool question(std::string_view, common::Icon) override {
        if (during) during();
        return true;
    }
    std::function<void()> during;
};

TEST(SalesScreen, AnActionInsideAnotherIsIgnored) {
    Counter counter;
    NestedPrompts prompts;
    sales::SalesScreen screen(
        counter.connection(), counter.session,
        {prompts, counter.services.clock, counter.services.devices, counter.services.log}, counter.printer);
    ASSERT_TRUE(screen.Open());
    ASSERT_TRUE(screen.EnterItem("400"));
    bool nested = true;
    prompts.during = [&] { nested = screen.EnterItem("410"); };
    EXPECT_TRUE(screen.EnterItem("400"));
    EXPECT_FALSE(nested);
    EXPECT_EQ(screen.invoice().lines.size(), 1u);
    EXPECT_EQ(screen.cells(0)[column::quantity], "2.000");
}

TEST(SalesScreen, ThreeHundredScansAreAllThereAndFast) {
    Counter counter;
    for (int code = 1001; code <= 1300; ++code) {
        counter.shop.sql("insert into items (code,name,num1,price11,price12) select " + std::to_string(code) +
                         ",N'صنف',1,1,2");
        counter.shop.sql("insert into stk (icode,stcode,edate,quan) select " + std::to_string(code) +
                         ",1,'3000/01/01',5");
    }
    auto& screen = counter.open();
    const auto start = std::chrono::steady_clock::now();
    for (int code = 1001; code <= 1300; ++code)
        ASSERT_TRUE(screen.EnterItem(std::to_string(code)));
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(screen.invoice().lines.size(), 300u);
    EXPECT_EQ(screen.figures().net, "600.00");
    // A frame for each, with the sanitizers' slowness allowed for.
    EXPECT_LT(std::chrono::duration_cast<std::chrono::milliseconds>(took).count(), 300 * 16);
}

}  // namespace
