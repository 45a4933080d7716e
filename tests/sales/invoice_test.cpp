// The invoice: its kinds and payments, the number series, the totals, the discount on the whole, and what is
// paid; the customer display to the byte, and the drawer.
#include "sales/invoice.h"
#include "common/messages.h"
#include "common/numbers.h"
#include "sales/counter.h"
#include "sales/messages.h"
#include "sales/payment.h"

namespace {

namespace column = sales::column;
namespace message = sales::message;
using common::Amount;
using sales::KindOption;
using sales::PaymentOption;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Display, LinesAreTwentyWide) {
    EXPECT_EQ(sales::display_text(Amount(12.5), {}), "Total  12.50        Change  0.00");
    EXPECT_EQ(sales::display_text({}, Amount(-3.46)), "Total  0.00         Change  -3.46");
    EXPECT_EQ(sales::display_text(Amount(1234567890.13), Amount(1)), "Total  1234567890.13Change  1.00");
}

TEST(Payment, ChangeFollowsThePaidField) {
    test::RememberedDevices devices;
    const std::string& shown = devices.files["xx.txt"];
    sales::Payment payment(devices, Amount(12.5), {{1, "سعاد"}}, 1);
    EXPECT_EQ(shown, "\x1F\x11Total  12.50        Change  0.00");
    EXPECT_EQ(payment.paid(), Amount(12.5)) << "the net is proposed";
    struct Case {
        const char* typed;
        const char* change;
    };
    for (const Case& c : {Case{"20", "7.50"}, Case{"٢٠", "7.50"}, Case{"12.50", "0.00"}, Case{"10", "-2.50"},
                          Case{"", "-12.50"}, Case{"x", "-12.50"}, Case{"100", "87.50"}}) {
        payment.type_paid(c.typed);
        EXPECT_EQ(payment.change().text(), c.change) << c.typed;
        EXPECT_EQ(shown, std::string("\x1F\x11Total  12.50        Change  ") + c.change);
    }
    test::RememberedPrompts prompts;
    EXPECT_TRUE(payment.agreed(prompts));
    payment.pay(Amount(10));
    EXPECT_EQ(shown, "\x1F\x11Total  12.50        Change  -2.50");
    prompts.answers = {false};
    EXPECT_FALSE(payment.agreed(prompts)) << "asked, with no as the default";
    payment.type_paid("100");
    payment.choose_worker(8);
    EXPECT_EQ(payment.worker(), 0) << "no such salesman";
    payment.choose_worker(1);
    const auto confirmed = payment.confirm();
    EXPECT_EQ(confirmed.taken.paid, Amount(100));
    EXPECT_EQ(confirmed.taken.change, Amount(87.5));
    EXPECT_EQ(confirmed.worker_name, "سعاد");
    EXPECT_EQ(shown, "\x1F\x11Welcome to Morvin");
}

TEST(Payment, ATextThatIsNoAmountIsRefusedAndChangesNothing) {
    test::RememberedDevices devices;
    sales::Payment payment(devices, Amount(12.5), {});
    payment.type_paid("20");
    for (const auto& [typed, why] :
         {std::pair("12.345", common::message::too_fine), std::pair("-5", common::message::no_minus),
          std::pair("12,5", common::message::no_comma),
          std::pair("1000000000", common::message::wrong_amount)}) {
        payment.type_paid(typed);
        EXPECT_EQ(payment.refusal(), why) << typed;
        EXPECT_EQ(payment.change(), Amount(7.5)) << typed;
    }
    payment.type_paid("13");
    EXPECT_EQ(payment.refusal(), "");
    EXPECT_EQ(payment.change(), Amount(0.5));
}

TEST(Drawer, KeyUsesItsOwnPort) {
    Counter counter;
    auto& desk = counter.open();
    EXPECT_TRUE(desk.checkout().open_drawer_by_key());
    EXPECT_EQ(counter.services.devices.ports["com3"], "\x07");
}

TEST(Drawer, DeadDevicesStopNothing) {
    Counter counter;
    counter.services.devices.fault = common::PortFault::silent;
    counter.open();
    EXPECT_TRUE(counter.enter("400"));
    ASSERT_TRUE(counter.sell()) << counter.services.prompts.last();
    EXPECT_TRUE(counter.said().empty());
}

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
        // F5 and F4 lead back to cash and to a sale from every other payment and kind.
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

// One line of the delivery service at the given total, at no cost.
sales::SalesDesk& line_of(Counter& counter, const char* price) {
    auto& desk = counter.open();
    EXPECT_TRUE(counter.enter("300"));
    EXPECT_TRUE(desk.lines().commit_edit(0, column::price, price));
    return desk;
}

TEST(Totals, DiscountFollowsThePercent) {
    Counter counter;
    auto& desk = line_of(counter, "50");
    ASSERT_TRUE(desk.lines().CommitDiscountPercent("10"));
    EXPECT_EQ(desk.sale().figures.discount_value, "5.00");
    EXPECT_EQ(desk.sale().figures.net, "45.00");
    ASSERT_TRUE(counter.enter("*"));
    ASSERT_TRUE(desk.lines().commit_edit(1, column::quantity, "1"));
    ASSERT_TRUE(desk.lines().commit_edit(1, column::price, "10"));
    EXPECT_EQ(desk.sale().figures.total, "60.00");
    EXPECT_EQ(desk.sale().figures.discount_value, "6.00");
    EXPECT_EQ(desk.sale().figures.net, "54.00");
    desk.lines().delete_line(1);
    desk.lines().delete_line(0);
    EXPECT_EQ(desk.sale().figures.total, "0.00");
    EXPECT_EQ(desk.sale().figures.discount_value, "0.00");
    EXPECT_EQ(desk.sale().figures.net, "0.00");
    EXPECT_EQ(desk.sale().figures.discount_percent, "10.00") << "the percent outlives the lines";
    EXPECT_FALSE(desk.sale().current_row.has_value());
}

// Every figure is rounded when it is computed, so that lines, discount and net add up as shown.
TEST(Totals, WeighedLinesAndDiscountsAddUpToThePiastre) {
    struct Case {
        std::vector<std::array<const char*, 2>> lines;  // quantity, price
        const char* percent;
        std::array<const char*, 4> figures;  // of the last line, total, discount, net
    };
    const Case cases[] = {
        // 31.4955 each: 3 × 31.50, not 94.4865
        {{{"0.45", "69.99"}, {"0.45", "69.99"}, {"0.45", "69.99"}}, "0", {"31.50", "94.50", "0.00", "94.50"}},
        {{{"1", "41.5"}}, "5", {"41.50", "41.50", "2.08", "39.42"}},  // 2.075
        {{{"0.7", "1.15"}}, "0", {"0.81", "0.81", "0.00", "0.81"}},   // 0.805, in binary below it
        {{{"0.1", "1.24"}, {"0.1", "1.24"}}, "10", {"0.12", "0.24", "0.02", "0.22"}},
    };
    for (const Case& c : cases) {
        Counter counter;
        auto& desk = counter.open();
        for (std::size_t row = 0; row < c.lines.size(); ++row) {
            ASSERT_TRUE(counter.enter("*"));
            ASSERT_TRUE(desk.lines().commit_edit(row, column::quantity, c.lines[row][0]));
            ASSERT_TRUE(desk.lines().commit_edit(row, column::price, c.lines[row][1]));
        }
        ASSERT_TRUE(desk.lines().CommitDiscountPercent(c.percent));
        const sales::Figures& shown = desk.sale().figures;
        EXPECT_EQ(counter.cell(c.lines.size() - 1, column::total), c.figures[0]);
        EXPECT_EQ(shown.total, c.figures[1]);
        EXPECT_EQ(shown.discount_value, c.figures[2]);
        EXPECT_EQ(shown.net, c.figures[3]);
        ASSERT_TRUE(counter.sell()) << counter.services.prompts.last();
        EXPECT_EQ(counter.shop.cell("select ptot from sales"),
                  common::shortest_text(std::stod(c.figures[1])));
        EXPECT_EQ(counter.shop.cell("select pdis from sales"),
                  common::shortest_text(std::stod(c.figures[2])));
    }
}

TEST(Totals, DeletingALineRenumbersAndKeepsTheCursorInside) {
    Counter counter;
    auto& desk = counter.open();
    for (const char* code : {"300", "400", "410"})
        ASSERT_TRUE(counter.enter(code));
    desk.lines().delete_line(1);
    EXPECT_EQ(counter.cell(1, column::number), "2");
    EXPECT_EQ(counter.cell(1, column::code), "410");
    EXPECT_EQ(desk.sale().current_row, 1u);
    desk.lines().delete_line(1);
    EXPECT_EQ(desk.sale().current_row, 0u);
    desk.lines().delete_line(7);
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
}

TEST(Totals, InvoiceDiscountAtItsEdges) {
    struct Case {
        bool by_percent;
        const char* typed;
        bool above_ceiling_allowed;
        const char* said;  // nullptr: accepted without a message
        const char* value;
        const char* percent;
        const char* net;
    };
    const char* check = "تأكد من قيمة الخصم";
    const char* refused = "غير مسموح بهذا الخصم";
    const Case cases[] = {
        {false, "10", false, nullptr, "10.00", "10.00", "90.00"},
        {false, "10.01", false, refused, "0.00", "0.00", "100.00"},
        {false, "10.01", true, nullptr, "10.01", "10.01", "89.99"},
        {false, "100", true, check, "0.00", "0.00", "100.00"},
        {false, "100", false, check, "0.00", "0.00", "100.00"},
        {false, "99.99", true, nullptr, "99.99", "99.99", "0.01"},
        {false, "0", false, nullptr, "0.00", "0.00", "100.00"},
        {false, "", false, nullptr, "0.00", "0.00", "100.00"},
        {false, "-1", true, common::message::no_minus.data(), "0.00", "0.00", "100.00"},
        {false, "ألف", true, check, "0.00", "0.00", "100.00"},
        {true, "10", false, nullptr, "10.00", "10.00", "90.00"},
        {true, "10.01", false, refused, "0.00", "0.00", "100.00"},
        {true, "١٠٫٠١", true, nullptr, "10.01", "10.01", "89.99"},
        {true, "100", true, check, "0.00", "0.00", "100.00"},
        {true, "1e308", true, check, "0.00", "0.00", "100.00"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.typed) + (c.by_percent ? " %" : ""));
        Counter counter;
        if (!c.above_ceiling_allowed) counter.forbid({301});
        auto& desk = line_of(counter, "100");
        EXPECT_TRUE(desk.lines().CommitDiscountPercent("3"));  // a refusal must remove it
        const bool taken = c.by_percent ? desk.lines().CommitDiscountPercent(c.typed)
                                        : desk.lines().CommitDiscountValue(c.typed);
        EXPECT_EQ(taken, c.said == nullptr);
        if (c.said != nullptr)
            EXPECT_THAT(counter.said(), ElementsAre(c.said));
        else
            EXPECT_THAT(counter.said(), IsEmpty());
        EXPECT_EQ(desk.sale().figures.discount_value, c.value);
        EXPECT_EQ(desk.sale().figures.discount_percent, c.percent);
        EXPECT_EQ(desk.sale().figures.net, c.net);
    }
}

TEST(Totals, AValueIsShownAsTypedHoweverOddItsPercent) {
    for (const char* value : {"0.01", "0.33", "1.00", "2.35", "2.99"}) {
        Counter counter;
        auto& desk = line_of(counter, "30.03");
        ASSERT_TRUE(desk.lines().CommitDiscountValue(value));
        EXPECT_EQ(desk.sale().figures.discount_value, value);
    }
}

TEST(Totals, LossOfTheWholeInvoiceIsWarnedOf) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("410"));  // 12.00, cost 10
    EXPECT_TRUE(desk.lines().CommitDiscountValue("2"));
    EXPECT_THAT(counter.said(), IsEmpty());
    EXPECT_TRUE(desk.lines().CommitDiscountValue("2.01"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::discount_loses)));
    EXPECT_EQ(desk.sale().figures.net, "9.99");
}

TEST(Totals, CellsComeBackFromTheirTexts) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("6221000400029"));
    ASSERT_TRUE(desk.lines().commit_edit(0, column::quantity, "2.5"));
    ASSERT_TRUE(desk.lines().commit_edit(0, column::discount_value, "1.5"));
    desk.lines().set_supplier(0, 2);
    ASSERT_TRUE(counter.enter("*"));
    EXPECT_EQ(sales::Line::from_cells(desk.invoice().cells(0)).source_store, 2);
    for (std::size_t row = 0; row < 2; ++row)
        EXPECT_EQ(sales::Line::from_cells(desk.invoice().cells(row)).cells(static_cast<int>(row) + 1),
                  desk.invoice().cells(row));
    std::array<std::string, column::count> broken;
    broken.fill("'; x 🍎");
    const auto line = sales::Line::from_cells(broken);
    EXPECT_TRUE(line.is_general());
    EXPECT_TRUE(line.total().is_zero());
    EXPECT_EQ(line.factor, 1);
}

}  // namespace
