#include "goods/item_card.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "goods/barcodes.h"
#include "stocked_shop.h"

namespace {

using testing::HasSubstr;

class ItemCards : public testing::Test, public test::StockedShop {
  protected:
    goods::ItemCard card() { return {shop.connection(), session, services.prompts, services.clock}; }
    std::string refusal_of(goods::ItemCard& item) {
        const auto refusal = item.save();
        return refusal ? std::string(refusal->field) + ": " + refusal->text : "saved";
    }
};

// A pack of 6 at 2.50 costs 15.00; levels without a price take the retail price.
TEST_F(ItemCards, ANewItemGetsThePricesThatWereLeftOut) {
    goods::ItemCard item = card();
    item.open_new();
    EXPECT_EQ(item.card.code, "504");
    item.card.name = "  بسكويت\tبالتمر ";
    item.card.group = "حلوى";
    item.card.pack = "٦";
    item.card.prices[0] = {"1.3333", "2.50", "2.25", "", ""};
    services.prompts.answers = {true};  // the group is new
    ASSERT_EQ(refusal_of(item), "saved");
    EXPECT_EQ(shop.cell("select name from items where code = 504"), "بسكويت بالتمر");
    EXPECT_EQ(
        shop.cell("select item_types.name from items inner join item_types on itype = item_types.code where "
                  "items.code = 504"),
        "حلوى");
    EXPECT_EQ(shop.number("select price14 from items where code = 504"), 2.5);
    EXPECT_EQ(shop.number("select price22 from items where code = 504"), 15);
    EXPECT_EQ(shop.number("select price23 from items where code = 504"), 13.5);
    EXPECT_DOUBLE_EQ(shop.number("select price21 from items where code = 504"), 7.9998);
    EXPECT_EQ(shop.number("select count(*) from till_price"), 0);
}

TEST_F(ItemCards, RefuseWhatTheTillCouldNotSell) {
    const struct {
        void (*spoil)(goods::CardFields&);
        const char* refusal;
    } cases[] = {
        {[](goods::CardFields& c) { c.name = " "; }, "item_name: أدخل اسم الصنف"},
        {[](goods::CardFields& c) { c.name = std::string(101, 'x'); }, "item_name: النص أطول"},
        {[](goods::CardFields& c) { c.code = "502"; }, "item_code: الكود مسجل للصنف : أرز (502)"},
        {[](goods::CardFields& c) { c.code = "3000000000"; }, "item_code: الكود غير صحيح"},
        {[](goods::CardFields& c) { c.prices[0][1] = ""; }, "item_price_12: أدخل سعر"},
        {[](goods::CardFields& c) { c.prices[0][1] = "0"; }, "item_price_12: سعر البيع صفر"},
        {[](goods::CardFields& c) { c.prices[0][1] = "-3"; }, "item_price_12: لا تكتب علامة السالب"},
        {[](goods::CardFields& c) { c.prices[0][2] = "3,5"; }, "item_price_13: اكتب الرقم بدون فواصل"},
        {[](goods::CardFields& c) { c.prices[0][1] = "9999999999"; }, "item_price_12: المبلغ غير صحيح"},
        {[](goods::CardFields& c) { c.prices[0][0] = "2000000000"; }, "item_price_11: التكلفة رقم"},
        {[](goods::CardFields& c) { c.pack = "0"; }, "item_pack: عدد الوحدات"},
        {[](goods::CardFields& c) { c.minimum = "كثير"; }, "item_minimum: الحد الأدنى"},
        {[](goods::CardFields& c) {
             c.barcodes = {{"77", 3}};
         },
         "item_carton: لهذه الوحدة باركود"},
    };
    for (const auto& [spoil, refusal] : cases) {
        goods::ItemCard item = card();
        item.open_new();
        item.card.name = "صنف";
        item.card.prices[0] = {"1", "2", "", "", ""};
        spoil(item.card);
        EXPECT_THAT(refusal_of(item), testing::StartsWith(refusal));
    }
    EXPECT_EQ(shop.number("select count(*) from items"), 3);
}

// The second office is told what changed. Its own edits stay, it takes over the rest, and it can save again.
TEST_F(ItemCards, OfTwoOfficesTheSecondIsToldWhatChanged) {
    goods::ItemCard first = card();
    goods::ItemCard second = card();
    ASSERT_FALSE(first.open(501));
    ASSERT_FALSE(second.open(501));
    first.card.minimum = "8";
    first.card.prices[0][1] = "10.50";
    ASSERT_EQ(refusal_of(first), "saved");
    second.card.name = "شاي ناعم";
    second.card.prices[0][1] = "11";
    const std::string told = refusal_of(second);
    EXPECT_THAT(told, HasSubstr("الحد الأدنى : من 5 إلى 8"));
    EXPECT_THAT(told, HasSubstr("قطاعي وحدة : من 10.00 إلى 10.50"));
    EXPECT_EQ(shop.cell("select name from items where code = 501"), "شاي");
    EXPECT_EQ(second.card.minimum, "8");
    ASSERT_EQ(refusal_of(second), "saved");
    EXPECT_EQ(shop.cell("select name from items where code = 501"), "شاي ناعم");
    EXPECT_EQ(prices(501), "8 11 9.5 96 115");
    EXPECT_EQ(shop.number("select count(*) from till_price where icode = 501"), 2);
}

TEST_F(ItemCards, AsksAboutPricesBelowTheCostAndHidesCosts) {
    goods::ItemCard item = card();
    ASSERT_FALSE(item.open(501));
    item.card.prices[0][2] = "7.99";
    services.prompts.answers = {false};
    EXPECT_EQ(refusal_of(item), ": ");
    EXPECT_THAT(services.prompts.questions.back(), HasSubstr("جملة وحدة 7.99  (التكلفة وحدة 8.00)"));
    EXPECT_EQ(prices(501), "8 10 9.5 96 115");

    session.permissions[381 - 1] = '0';  // may not see costs
    goods::ItemCard other = card();
    ASSERT_FALSE(other.open(501));
    EXPECT_EQ(other.card.prices[0][0], "");
    other.card.prices[0][1] = "10.25";
    ASSERT_EQ(refusal_of(other), "saved");
    EXPECT_EQ(prices(501), "8 10.25 9.5 96 115");
}

// Changing the retail price of the unit changes the prices computed from it, and nothing else.
TEST_F(ItemCards, PricesFollowTheOneTheyWereWorkedOutFrom) {
    goods::ItemCard item = card();
    ASSERT_FALSE(item.open(501));
    item.card.prices[0][1] = "11";
    EXPECT_TRUE(item.follow(1, 2, "10.00"));
    EXPECT_THAT(item.card.prices[0], testing::ElementsAre("8.00", "11", "9.50", "11.00", "11.00"));
    // The carton's 115 was set by hand; 120 is 12 times the former 10.
    EXPECT_THAT(item.card.prices[2], testing::ElementsAre("96.00", "115.00", "110.00", "132.00", "132.00"));
}

// 6221031001239 is tea's. 2 + 1×3 + 5×3 + 1×3 = 23, so that the shop's own barcode of 501 ends in 7.
TEST_F(ItemCards, BarcodesAreReadAndDrawn) {
    EXPECT_EQ(goods::own_barcodes(501, 1).front(), "2100000005017");
    EXPECT_TRUE(goods::is_true_ean("96385074"));
    goods::ItemCard item = card();
    ASSERT_FALSE(item.open(502));
    const struct {
        const char* typed;
        const char* said;
    } refused[] = {{"6221031001239", "مسجل للصنف : شاي (501)"},
                   {"501", "كود الصنف : شاي (501)"},
                   {"2000501012345", "ملصق الميزان"},
                   {"12 34", "مسافة"},
                   {"", "أدخل الباركود"},
                   {"6,22E+12", "برنامج الجداول"}};
    for (const auto& [typed, said] : refused) {
        EXPECT_FALSE(item.add_barcode(typed, 1)) << typed;
        EXPECT_THAT(services.prompts.last(), HasSubstr(said));
    }
    services.prompts.answers = {false, true};  // a wrong check digit: not kept, then kept all the same
    EXPECT_FALSE(item.add_barcode("6221031001235", 1));
    EXPECT_TRUE(item.add_barcode("٦٢٢١٠٣١٠٠١٢٣٥", 1));
    EXPECT_TRUE(item.draw_barcode(1));
    EXPECT_TRUE(item.draw_barcode(1));
    EXPECT_EQ(item.card.barcodes[2].text.substr(0, 12), "240000000502");
    ASSERT_EQ(refusal_of(item), "saved");
    EXPECT_EQ(shop.number("select count(*) from barcode where code = 502 and scode = 1"), 3);

    // Another office takes a barcode between typing and saving.
    item.add_barcode("ABC-1", 1);
    shop.sql("insert into barcode (bar,code,scode) select 'ABC-1',503,1");
    EXPECT_THAT(refusal_of(item), HasSubstr("مسجل للصنف : توصيل (503)"));
    EXPECT_EQ(shop.number("select count(*) from barcode where code = 502"), 3);
}

TEST_F(ItemCards, AreDeletedOnlyIfNothingRefersToThem) {
    goods::ItemCard item = card();
    ASSERT_FALSE(item.open(502));
    const auto refusal = item.remove();
    ASSERT_TRUE(refusal);
    EXPECT_THAT(refusal->text, HasSubstr("رصيد بالمخازن"));
    ASSERT_FALSE(item.open(501));
    ASSERT_FALSE(item.remove());
    EXPECT_EQ(shop.number("select count(*) from items"), 2);
    EXPECT_EQ(shop.number("select count(*) from barcode"), 0);
}

}  // namespace
