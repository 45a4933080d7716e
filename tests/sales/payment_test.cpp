// The payment dialog's figures, the customer display to the byte, and the drawer.
#include "sales/payment.h"

#include "sales/counter.h"
#include "sales/payment.h"

namespace {

using test::Counter;
using testing::ElementsAre;

TEST(Display, LinesAreTwentyWide) {
    EXPECT_EQ(sales::display_text(12.5, 0), "Total  12.50        Change  0.00");
    EXPECT_EQ(sales::display_text(12.5, 0).find("Change"), 20u);
    EXPECT_EQ(sales::display_text(0, -3.456), "Total  0.00         Change  -3.46");
    EXPECT_EQ(sales::display_text(1234567890.125, 1), "Total  1234567890.13Change  1.00");
}

TEST(Payment, ChangeFollowsThePaidField) {
    test::RememberedDevices devices;
    const std::string& shown = devices.files["xx.txt"];
    sales::Payment payment(devices, 12.5, {{1, "سعاد"}}, 1);
    EXPECT_EQ(shown, "\x1F\x11Total  12.50        Change  0.00");
    EXPECT_EQ(payment.paid_text(), "12.50") << "the net is proposed";
    struct Case {
        const char* typed;
        const char* change;
    };
    for (const Case& c : {Case{"20", "7.50"}, Case{"٢٠", "7.50"}, Case{"12.50", "0.00"}, Case{"10", "-2.50"},
                          Case{"", "-12.50"}, Case{"x", "-12.50"}, Case{"100", "87.50"}}) {
        payment.type_paid(c.typed);
        EXPECT_EQ(payment.change_text(), c.change) << c.typed;
        EXPECT_EQ(shown, std::string("\x1F\x11Total  12.50        Change  ") + c.change);
    }
    payment.choose_worker(8);
    EXPECT_EQ(payment.worker(), 0) << "no such salesman";
    payment.choose_worker(1);
    const auto confirmed = payment.confirm();
    EXPECT_EQ(confirmed.paid, 100);
    EXPECT_EQ(confirmed.change, 87.5);
    EXPECT_EQ(confirmed.worker_name, "سعاد");
    EXPECT_EQ(shown, "\x1F\x11Welcome to Morvin");
}

TEST(Payment, WhoeverPaysWhatIsShownHasPaid) {
    struct Case {
        double net;
        const char* shown;
    };
    // Weighed goods cost fractions of the smallest coin.
    for (const Case& c :
         {Case{10.125, "10.13"}, Case{2.525, "2.53"}, Case{13.8195, "13.82"}, Case{41.4549, "41.45"}}) {
        test::RememberedDevices devices;
        sales::Payment payment(devices, c.net, {});
        EXPECT_EQ(payment.net_text(), c.shown);
        payment.type_paid(c.shown);
        EXPECT_EQ(payment.change_text(), "0.00") << c.shown;
        EXPECT_EQ(payment.confirm().change, 0) << c.shown;
    }
}

TEST(Drawer, KeyUsesItsOwnPortAndPermission) {
    Counter counter;
    auto& desk = counter.open();
    EXPECT_TRUE(desk.checkout().open_drawer_by_key());
    EXPECT_EQ(counter.services.devices.ports["com3"], "\x07");
    counter.forbid({231});
    EXPECT_FALSE(desk.checkout().open_drawer_by_key());
    EXPECT_EQ(counter.services.devices.ports["com3"], "\x07");
    EXPECT_THAT(counter.said(), ElementsAre("غير مصرح باستخدام هذا البند"));
}

TEST(Drawer, DeadDevicesStopNothing) {
    Counter counter;
    counter.services.devices.dead = true;
    auto& desk = counter.open();
    EXPECT_TRUE(counter.enter("400"));
    ASSERT_EQ(desk.checkout().begin_save(), sales::BeginSave::ask_payment);
    EXPECT_EQ(desk.checkout().SaveInvoice(), sales::SaveOutcome::saved);
    EXPECT_TRUE(counter.said().empty());
}

}  // namespace
