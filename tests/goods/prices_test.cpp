#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/numbers.h"
#include "database/transaction.h"
#include "goods/cost.h"
#include "goods/price_plan.h"
#include "goods/prices.h"
#include "stocked_shop.h"

namespace {

using goods::NewPrice;
using testing::ElementsAre;

class Prices : public testing::Test, public test::StockedShop {
  protected:
    void change(std::vector<NewPrice> prices, std::string_view why) {
        database::in_transaction(shop.connection(), [&] {
            goods::change_prices(shop.connection(), session, services.clock.now(), prices, why);
        });
    }
    goods::PricePlan plan() { return {shop.connection(), session, services.prompts, services.clock}; }
};

// The history shows each former price, and the cost of a unit at any moment.
TEST_F(Prices, ArePutIntoTheHistoryAndCostsAreReadFromIt) {
    change({{501, 1, 1, 9}, {501, 1, 2, 11}, {501, 1, 3, 9.5}, {502, 1, 2, 7.35}}, goods::why::receipt);
    services.clock.moment.date.day = 23;
    change({{501, 1, 1, 9.25}}, goods::why::card);
    EXPECT_EQ(prices(501), "9.25 11 9.5 96 115");

    std::vector<std::string> history;
    for (const auto& row : goods::price_history(shop.connection(), 501))
        history.push_back(common::date_text(row.moment.date) + " " + std::to_string(row.price.price_level) +
                          " " + common::shortest_text(row.from.value_or(-1)) + ">" +
                          common::shortest_text(row.price.price) + " " + row.user + " " + row.why);
    EXPECT_THAT(history,
                ElementsAre("2026/11/23 1 9>9.25 مدير كارت الصنف", "2026/11/21 2 10>11 مدير بضاعة واردة",
                            "2026/11/21 1 8>9 مدير بضاعة واردة"));
    EXPECT_TRUE(goods::price_history(shop.connection(), 502).empty());

    const goods::Costs costs(shop.connection(), {{2026, 11, 1}, {}});
    EXPECT_EQ(costs.of(501, {{2026, 11, 21}, {10, 41, 59, 0}}), 8);
    EXPECT_EQ(costs.of(501, {{2026, 11, 21}, {10, 42, 0, 0}}), 9);
    EXPECT_EQ(costs.of(501, {{2026, 11, 22}, {}}), 9);
    EXPECT_EQ(costs.of(501, {{2026, 11, 24}, {}}), 9.25);
    EXPECT_EQ(costs.of(502, {{2026, 11, 2}, {}}), 7);
    EXPECT_EQ(costs.of(999, {{2026, 11, 2}, {}}), 0);
}

// A shop where no table can be created has no history, and its prices change all the same.
TEST_F(Prices, ChangeWithoutTheTableOfTheHistory) {
    shop.sql("drop table till_price");
    change({{501, 1, 2, 11}}, goods::why::card);
    EXPECT_EQ(prices(501), "8 11 9.5 96 115");
    EXPECT_EQ(goods::Costs(shop.connection(), {}).of(501, {{2026, 11, 21}, {}}), 8);
}

// A carton of 12 at 8 costs 96 and follows the unit; one with a cost of its own does not.
TEST_F(Prices, CostsOfCartonsFollowTheUnit) {
    const auto costs = [&] {
        std::string text;
        for (const auto& price : goods::costs_of_units(
                 shop.connection().query("select * from items where code = 501").front(), 8.5))
            text += std::to_string(price.unit_level) + ":" + common::shortest_text(price.price) + " ";
        return text;
    };
    EXPECT_EQ(costs(), "1:8.5 3:102 ");
    shop.sql("update items set price31 = 90 where code = 501");
    EXPECT_EQ(costs(), "1:8.5 ");
}

TEST_F(Prices, AreRoundedHalfUpwards) {
    const struct {
        double price;
        int step;
        const char* text;
    } cases[] = {{10.124, 0, "10.12"},  {10.125, 0, "10.13"}, {10.02, 5, "10.00"},  {10.025, 5, "10.05"},
                 {10.12, 25, "10.00"},  {10.13, 25, "10.25"}, {10.24, 50, "10.00"}, {10.25, 50, "10.50"},
                 {10.49, 100, "10.00"}, {10.5, 100, "11.00"}, {0.1, 25, "0.00"}};
    for (const auto& [price, step, text] : cases)
        EXPECT_EQ(goods::rounded_price(price, step).text(), text) << price << " to " << step;
}

// 10 % on 10.00 and 115.00 is 11.00 and 126.50; 7.35 becomes 8.085, to 0.25: 8.00; the service's 20
// becomes 22.
TEST_F(Prices, OfSeveralItemsAreShownBeforeTheyChange) {
    goods::PricePlan several = plan();
    several.choice.percent = "10";
    several.choice.step = 25;
    ASSERT_FALSE(several.work_out());
    std::vector<std::string> changes;
    for (const auto& change : several.changes())
        changes.push_back(std::to_string(change.price.item) + "/" + std::to_string(change.price.unit_level) +
                          " " + common::shortest_text(change.from) + ">" +
                          common::shortest_text(change.price.price));
    EXPECT_THAT(changes, testing::UnorderedElementsAre("501/1 10>11", "501/3 115>126.5", "502/1 7.35>8",
                                                       "503/1 20>22"));
    EXPECT_EQ(prices(501), "8 10 9.5 96 115");

    // Another office changes one of them: nothing is written, and it is told which.
    shop.sql("update items set price12 = 7.5 where code = 502");
    auto refusal = several.apply();
    ASSERT_TRUE(refusal);
    EXPECT_THAT(refusal->text, testing::HasSubstr("أرز : من 7.35 إلى 7.50"));
    EXPECT_EQ(prices(501), "8 10 9.5 96 115");
    EXPECT_EQ(shop.number("select count(*) from till_price"), 0);

    ASSERT_FALSE(several.work_out());
    ASSERT_FALSE(several.apply());
    EXPECT_EQ(prices(501), "8 11 9.5 96 126.5");
    EXPECT_EQ(shop.number("select price12 from items where code = 502"), 8.25);  // 7.50 + 10 %
    EXPECT_EQ(shop.number("select count(*) from till_price where why = N'تعديل أسعار'"), 4);
}

TEST_F(Prices, BelowTheCostAreAskedAboutAndZeroIsLeftOut) {
    goods::PricePlan several = plan();
    several.filter.marked = {501, 502};
    several.choice.rule = goods::PriceRule::lower;
    several.choice.percent = "50";
    several.choice.step = 100;
    several.choice.unit_levels = {1};
    ASSERT_FALSE(several.work_out());
    EXPECT_EQ(several.below_cost(), 2U);  // 5 below 8, and 3.675, rounded 4, below 7
    services.prompts.answers = {false};
    ASSERT_TRUE(several.apply());
    EXPECT_EQ(prices(501), "8 10 9.5 96 115");
    several.choice.percent = "97";  // 0.30 and 0.2205 round to 0
    ASSERT_FALSE(several.work_out());
    EXPECT_EQ(several.left_out(), 2U);
    EXPECT_TRUE(several.changes().empty());

    several.choice = {goods::PriceRule::margin, "15", 5, {1, 3}, {2}};
    ASSERT_FALSE(several.work_out());  // 8 + 15 % is 9.20, 96 + 15 % is 110.40, 7 + 15 % is 8.05
    // Wholesale at 9.50 and two prices at 10.00 would be above 9.20; 110 is not, and 120 was above 115
    // before.
    EXPECT_EQ(several.lowered_with_retail(), 3U);
    ASSERT_FALSE(several.apply());
    EXPECT_EQ(prices(501), "8 9.2 9.2 96 110.4");
    EXPECT_EQ(shop.cell("select cast(price14 as varchar) + ' ' + cast(price33 as varchar) + ' ' + "
                        "cast(price34 as varchar) from items where code = 501"),
              "9.2 110 120");
    EXPECT_EQ(shop.number("select price12 from items where code = 502"), 8.05);

    for (const char* wrong : {"", "0", "-5", "5,5", "abc", "1001"}) {
        several.choice = {};
        several.choice.percent = wrong;
        EXPECT_TRUE(several.work_out()) << wrong;
    }
}

TEST_F(Prices, StayAsTheyAreInAShopThatIsReadOnly) {
    session.is_read_only = true;
    goods::PricePlan several = plan();
    several.choice.percent = "10";
    ASSERT_FALSE(several.work_out());
    EXPECT_TRUE(several.apply());
    EXPECT_EQ(prices(501), "8 10 9.5 96 115");
}

}  // namespace
