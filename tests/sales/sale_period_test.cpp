// A till that stays on meets the sale periods that begin and end meanwhile.
#include "sales/counter.h"

namespace {

using test::Counter;

TEST(SalePeriod, ATillLeftOnNoticesItsBeginningAndEnd) {
    Counter counter;
    counter.shop.sql("insert into sal_prd (sale_no,sale_from,sale_to) select 1,'2026/11/22','2026/11/23'");
    counter.shop.sql("insert into sale_price (sale_prd,icode,p_per) select 1,410,25");
    auto& desk = counter.open();
    const auto price_now = [&] {
        EXPECT_TRUE(counter.enter("410")) << counter.services.prompts.last();
        const double price = desk.invoice().lines.back().price;
        counter.start_anew();
        return price;
    };
    EXPECT_EQ(price_now(), 12);
    counter.services.clock.moment = {{2026, 11, 22}, {0, 0, 1, 0}};
    EXPECT_EQ(price_now(), 9) << "begun at midnight";
    EXPECT_EQ(price_now(), 9);
    counter.services.clock.moment = {{2026, 11, 24}, {8, 0, 0, 0}};
    EXPECT_EQ(price_now(), 12) << "over";

    // The manager makes one in the middle of the day, while an invoice is rung up.
    EXPECT_TRUE(counter.enter("440"));
    counter.shop.sql("insert into sal_prd (sale_no,sale_from,sale_to) select 2,'2026/11/24','2026/11/24'");
    counter.shop.sql("insert into sale_price (sale_prd,icode,s_price) select 2,410,7");
    EXPECT_TRUE(counter.enter("410"));
    EXPECT_EQ(desk.invoice().lines.back().price, 12) << "one invoice, one price list";
    counter.start_anew();
    EXPECT_EQ(price_now(), 7);
}

}  // namespace
