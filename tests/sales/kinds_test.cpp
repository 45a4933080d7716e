// Kinds, payments, their switching and the number series.
#include "sales/kinds.h"

#include "sales/counter.h"
#include "sales/messages.h"

namespace {

namespace message = sales::message;
using sales::KindOption;
using sales::PaymentOption;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Kinds, SwitchingAnEmptyScreen) {
    struct Case {
        KindOption kind;
        PaymentOption from;
        PaymentOption to;
        std::uint32_t colour;
        std::string_view label;
    };
    const Case cases[] = {
        {KindOption::sale, PaymentOption::cash, PaymentOption::cash, 0xECFFFF, "بيع نقدي"},
        {KindOption::sale, PaymentOption::account, PaymentOption::account, 0xECFFFF, "بيع الي"},
        {KindOption::return_, PaymentOption::cash, PaymentOption::cash, 0xC0FFC0, "مرتجع نقدي"},
        {KindOption::return_, PaymentOption::account, PaymentOption::account, 0xC0FFC0, "مرتجع الي"},
        {KindOption::return_, PaymentOption::card, PaymentOption::account, 0xC0FFC0, "مرتجع الي"},
        {KindOption::return_, PaymentOption::tips, PaymentOption::cash, 0xC0FFC0, "مرتجع نقدي"},
        {KindOption::third, PaymentOption::cash, PaymentOption::cash, 0xC0E0FF, "بيع نقدي"},
        {KindOption::third, PaymentOption::account, PaymentOption::account, 0xC0E0FF, "بيع الي"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        Counter counter;
        auto& screen = counter.open();
        ASSERT_TRUE(screen.SwitchPayment(c.from));
        ASSERT_TRUE(screen.SwitchKind(c.kind));
        EXPECT_EQ(screen.invoice().payment, c.to);
        EXPECT_EQ(screen.grid_colour(), c.colour);
        EXPECT_EQ(screen.kind_label(), c.label);
        const bool sale = c.kind == KindOption::sale;
        EXPECT_EQ(screen.payment_enabled(PaymentOption::card), sale);
        EXPECT_EQ(screen.SwitchPayment(PaymentOption::card), sale);
        EXPECT_EQ(screen.SwitchPayment(PaymentOption::tips), sale);
    }
}

TEST(Kinds, LinesHoldTheirGroup) {
    struct Case {
        KindOption from, to;
        bool allowed;
    };
    const Case cases[] = {
        {KindOption::sale, KindOption::return_, false}, {KindOption::sale, KindOption::third, false},
        {KindOption::return_, KindOption::sale, false}, {KindOption::third, KindOption::sale, false},
        {KindOption::return_, KindOption::third, true}, {KindOption::third, KindOption::return_, true},
        {KindOption::sale, KindOption::sale, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(static_cast<int>(c.from)) + " to " +
                     std::to_string(static_cast<int>(c.to)));
        Counter counter;
        auto& screen = counter.open();
        ASSERT_TRUE(screen.SwitchKind(c.from));
        ASSERT_TRUE(screen.EnterItem("400"));
        EXPECT_EQ(screen.SwitchKind(c.to), c.allowed);
        EXPECT_EQ(screen.invoice().kind, c.allowed ? c.to : c.from);
        if (!c.allowed) {
            EXPECT_THAT(counter.said(), ElementsAre("لا يمكن تغير نوع البون الان "));
            EXPECT_EQ(counter.services.prompts.last_icon, common::Icon::exclamation);
        }
        EXPECT_EQ(screen.invoice().lines.size(), 1u);
        screen.delete_line(0);
        EXPECT_TRUE(screen.SwitchKind(c.to)) << "an empty grid holds nothing";
    }
}

TEST(Kinds, ReturnsNeedTheirPermission) {
    for (const KindOption kind : {KindOption::return_, KindOption::third}) {
        Counter counter;
        counter.forbid({161});
        auto& screen = counter.open();
        EXPECT_FALSE(screen.SwitchKind(kind));
        EXPECT_THAT(counter.said(), ElementsAre("غير مصرح باستخدام هذا البند"));
        EXPECT_EQ(counter.services.prompts.last_icon, common::Icon::critical);
        EXPECT_EQ(screen.invoice().kind, KindOption::sale);
    }
}

TEST(Kinds, FunctionKeysToggle) {
    Counter counter;
    auto& screen = counter.open();
    screen.toggle_kind();
    EXPECT_EQ(screen.invoice().kind, KindOption::return_);
    screen.toggle_kind();
    EXPECT_EQ(screen.invoice().kind, KindOption::sale);
    screen.SwitchKind(KindOption::third);
    screen.toggle_kind();
    EXPECT_EQ(screen.invoice().kind, KindOption::sale);
    screen.toggle_payment();
    EXPECT_EQ(screen.invoice().payment, PaymentOption::account);
    screen.toggle_payment();
    EXPECT_EQ(screen.invoice().payment, PaymentOption::cash);
    screen.SwitchPayment(PaymentOption::tips);
    screen.toggle_payment();
    EXPECT_EQ(screen.invoice().payment, PaymentOption::cash);
}

TEST(Kinds, CustomerBelongsToAccountInvoicesOnly) {
    Counter counter;
    auto& screen = counter.open();
    EXPECT_FALSE(screen.choose_customer(99));
    ASSERT_TRUE(screen.SwitchPayment(PaymentOption::account));
    ASSERT_TRUE(screen.choose_customer(7));
    EXPECT_EQ(screen.invoice().customer_name, "مطعم الأمل");
    screen.SwitchPayment(PaymentOption::cash);
    EXPECT_EQ(screen.invoice().customer, sales::walk_in_customer);
    EXPECT_EQ(screen.invoice().customer_name, "");
    screen.SwitchPayment(PaymentOption::account);
    EXPECT_EQ(screen.invoice().customer, 7) << "switching there and back must not lose the customer";
}

TEST(Kinds, EachSeriesCountsOnItsOwn) {
    Counter counter;
    auto& screen = counter.open();
    const auto number = [&](KindOption kind, PaymentOption payment, std::int64_t store) {
        screen.SwitchKind(kind);
        screen.SwitchPayment(payment);
        screen.choose_store(store);
        return screen.invoice().number;
    };
    EXPECT_EQ(number(KindOption::sale, PaymentOption::cash, 1), 1) << "an empty table begins at 1";
    EXPECT_EQ(number(KindOption::return_, PaymentOption::cash, 1), 1);
    struct Row {
        int pnum, vcode, ctype, store;
    };
    for (const Row& row : {Row{10, -1, 0, 1}, Row{12, -1, 1, 2}, Row{50, 7, 0, 1}, Row{4, -1, 2, 1},
                           Row{9, 7, 3, 1}, Row{6, -1, 2, 2}})
        counter.shop.sql("insert into sales (pnum,vcode,ctype,stcode) select " + std::to_string(row.pnum) +
                         "," + std::to_string(row.vcode) + "," + std::to_string(row.ctype) + "," +
                         std::to_string(row.store));
    EXPECT_EQ(number(KindOption::sale, PaymentOption::cash, 1), 13);
    EXPECT_EQ(number(KindOption::sale, PaymentOption::card, 2), 13);
    EXPECT_EQ(number(KindOption::sale, PaymentOption::tips, 1), 13);
    EXPECT_EQ(number(KindOption::sale, PaymentOption::account, 2), 51);
    EXPECT_EQ(number(KindOption::return_, PaymentOption::cash, 1), 10);
    EXPECT_EQ(number(KindOption::third, PaymentOption::account, 1), 10);
    EXPECT_EQ(number(KindOption::return_, PaymentOption::account, 2), 7);
}

}  // namespace
