#include "goods/item_list.h"

#include <gtest/gtest.h>

#include "goods/pick.h"
#include "stocked_shop.h"

namespace {

class ItemLists : public testing::Test, public test::StockedShop {
  protected:
    std::string found(goods::ItemFilter filter) {
        std::string codes;
        for (const auto& item : goods::list_items(shop.connection(), filter).items)
            codes += (codes.empty() ? "" : " ") + std::to_string(item.code);
        return codes;
    }
    goods::Picked pick(const std::string& text) {
        return goods::pick_item(shop.connection(), sales::read_entry(text));
    }
};

TEST_F(ItemLists, FindWordsCodesAndBarcodes) {
    const struct {
        goods::ItemFilter filter;
        const char* codes;
    } cases[] = {{{}, "502 503 501"},
                 {{"ارز"}, "502"},
                 {{"503"}, "503"},
                 {{"٥٠٣"}, "503"},
                 {{"6221031001239"}, "501"},
                 {{"", 1}, "501"},
                 {{"", 0, 4}, "501"},
                 {{"ارز", 1}, ""},
                 {{"999"}, ""},
                 {{"' or 1=1 --"}, ""},
                 {{"", 0, 0, {501, 503}}, "503 501"}};
    for (const auto& [filter, codes] : cases)
        EXPECT_EQ(found(filter), codes) << filter.typed;
    const auto list = goods::list_items(shop.connection(), {});
    EXPECT_EQ(list.count, 3U);
    EXPECT_EQ(list.items[0].stock, 3);
    EXPECT_FALSE(list.items[1].stock);    // a service
    EXPECT_TRUE(list.items[2].is_low());  // none of at least 5

    // The screen shows the first thousand, paper has all, each with its stock.
    for (int code = 1001; code <= 2001; ++code)
        shop.sql("insert into items (code,[name],num1,price12) select " + std::to_string(code) +
                 ",N'صنف',1,5");
    shop.sql("insert into stk (icode,stcode,quan,edate) select 2001,1,7,'3000/01/01'");
    EXPECT_EQ(goods::list_items(shop.connection(), {"صنف"}).items.size(), 1000U);
    const auto all = goods::list_items(shop.connection(), {"صنف"}, goods::ListLength::all);
    ASSERT_EQ(all.items.size(), 1001U);
    EXPECT_EQ(all.items.back().stock, 7);
    EXPECT_EQ(all.items.front().stock, 0);
}

// The field of the office: a barcode names its unit, "6*" a quantity, a label of the scale a weight.
TEST_F(ItemLists, AnEntryNamesAnItemAndItsUnit) {
    using Outcome = goods::Picked::Outcome;
    shop.sql("insert into barcode (bar,code,scode) select '777',501,3");
    shop.sql("update items set stop = 1 where code = 501");  // it may still be counted
    const goods::Picked carton = pick("6*777");
    ASSERT_EQ(carton.outcome, Outcome::item);
    EXPECT_EQ(carton.pick.item.code, 501);
    EXPECT_EQ(carton.pick.item.unit_level, 3);
    EXPECT_EQ(carton.pick.item.factor, 12);
    EXPECT_EQ(carton.pick.quantity, 6);
    EXPECT_TRUE(carton.pick.quantity_typed);
    const goods::Picked weighed = pick("2000502012509");
    EXPECT_EQ(weighed.pick.item.code, 502);
    EXPECT_EQ(weighed.pick.quantity, 1.25);
    EXPECT_EQ(pick("أرز").outcome, Outcome::words);
    EXPECT_EQ(pick("9999").refusal, "الكود غير صحيح");
    EXPECT_EQ(pick("5%").outcome, Outcome::refused);
    EXPECT_TRUE(pick(" ").refusal.empty());
}

}  // namespace
