// Kinds, payments, their switching and the number series.
#include "sales/invoice.h"

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
        auto& desk = counter.open();
        ASSERT_TRUE(desk.header().SwitchPayment(c.from));
        ASSERT_TRUE(desk.header().SwitchKind(c.kind));
        EXPECT_EQ(desk.invoice().payment, c.to);
        EXPECT_EQ(sales::grid_colour(desk.invoice().kind), c.colour);
        EXPECT_EQ(sales::kind_caption(desk.invoice().kind, desk.invoice().payment), c.label);
        const bool sale = c.kind == KindOption::sale;
        EXPECT_EQ(sales::payment_enabled(PaymentOption::card, desk.invoice().kind), sale);
        EXPECT_EQ(desk.header().SwitchPayment(PaymentOption::card), sale);
        EXPECT_EQ(desk.header().SwitchPayment(PaymentOption::tips), sale);
        // F5 and F4 lead back to a cash sale from everything but cash and the sale itself.
        desk.header().SwitchPayment(sale ? PaymentOption::tips : PaymentOption::account);
        desk.header().toggle_payment();
        EXPECT_EQ(desk.invoice().payment, PaymentOption::cash);
        desk.header().toggle_kind();
        EXPECT_EQ(desk.invoice().kind, sale ? KindOption::return_ : KindOption::sale);
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
        auto& desk = counter.open();
        ASSERT_TRUE(desk.header().SwitchKind(c.from));
        ASSERT_TRUE(counter.enter("400"));
        EXPECT_EQ(desk.header().SwitchKind(c.to), c.allowed);
        EXPECT_EQ(desk.invoice().kind, c.allowed ? c.to : c.from);
        if (!c.allowed) {
            EXPECT_THAT(counter.said(), ElementsAre("لا يمكن تغير نوع البون الان "));
            EXPECT_EQ(counter.services.prompts.last_icon, common::Icon::exclamation);
        }
        EXPECT_EQ(desk.invoice().lines.size(), 1u);
        desk.lines().delete_line(0);
        EXPECT_TRUE(desk.header().SwitchKind(c.to)) << "an empty grid holds nothing";
    }
}

TEST(Kinds, ReturnsNeedTheirPermission) {
    for (const KindOption kind : {KindOption::return_, KindOption::third}) {
        Counter counter;
        counter.forbid({161});
        auto& desk = counter.open();
        EXPECT_FALSE(desk.header().SwitchKind(kind));
        EXPECT_THAT(counter.said(), ElementsAre("غير مصرح باستخدام هذا البند"));
        EXPECT_EQ(counter.services.prompts.last_icon, common::Icon::critical);
        EXPECT_EQ(desk.invoice().kind, KindOption::sale);
    }
}

TEST(Kinds, CustomerBelongsToAccountInvoicesOnly) {
    Counter counter;
    auto& desk = counter.open();
    EXPECT_FALSE(desk.header().choose_customer(99));
    ASSERT_TRUE(desk.header().SwitchPayment(PaymentOption::account));
    ASSERT_TRUE(desk.header().choose_customer(7));
    EXPECT_EQ(desk.invoice().customer_name, "مطعم الأمل");
    desk.header().SwitchPayment(PaymentOption::cash);
    EXPECT_EQ(desk.invoice().customer, sales::walk_in_customer);
    EXPECT_EQ(desk.invoice().customer_name, "");
    desk.header().SwitchPayment(PaymentOption::account);
    EXPECT_EQ(desk.invoice().customer, 7) << "switching there and back must not lose the customer";
}

TEST(Kinds, EachSeriesCountsOnItsOwn) {
    Counter counter;
    auto& desk = counter.open();
    const auto number = [&](KindOption kind, PaymentOption payment, std::int64_t store) {
        desk.header().SwitchKind(kind);
        desk.header().SwitchPayment(payment);
        desk.header().choose_store(store);
        return desk.invoice().number;
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
