#include "goods/item_import.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "stocked_shop.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ItemImport : public testing::Test, public test::StockedShop {
  protected:
    goods::ImportPlan plan(const std::string& csv) {
        return goods::plan_import(shop.connection(), csv, true);
    }
    goods::ImportOutcome write(const goods::ImportPlan& plan) {
        return goods::write_import(shop.connection(), session, plan, services.clock.now());
    }
};

// A line changes what it gives and leaves the rest: here a name, a maker, prices and a second barcode.
TEST_F(ItemImport, ChangesWhatALineGives) {
    const goods::ImportPlan planned = plan(
        "code,name,maker,price12,price31,barcode,minimum\n"
        "501,,الوادي,10.5,,6221031001239|777,5\n"
        "502,أرز مصري,,٧.٥٠,,,\n"
        "503,توصيل,,20,,,\n"
        "900,جديد,,3,,,\n");
    ASSERT_TRUE(planned.problems.empty()) << planned.problems.front().reason.english;
    std::vector<std::string> changes;
    for (const auto& line : planned.lines)
        changes.push_back(line.name + ": " + line.changes);
    EXPECT_THAT(changes,
                ElementsAre("شاي: الشركة: من ندوان إلى الوادي، قطاعي وحدة: من 10 إلى 10.5، باركود وحدة: 777",
                            "أرز مصري: الاسم: من أرز إلى أرز مصري، قطاعي وحدة: من 7.35 إلى 7.5",
                            "توصيل: ", "جديد: "));
    EXPECT_EQ(planned.changed, 2U);
    EXPECT_EQ(planned.added, 1U);
    EXPECT_EQ(prices(501), "8 10 9.5 96 115");  // nothing is written yet

    const goods::ImportOutcome outcome = write(planned);
    ASSERT_TRUE(outcome.problems.empty()) << outcome.problems.front().reason.english;
    EXPECT_EQ(prices(501), "8 10.5 9.5 96 115");
    EXPECT_EQ(shop.cell("select name from items where code = 501"), "شاي");
    EXPECT_EQ(
        shop.cell(
            "select makers.name from items inner join makers on fact = makers.code where items.code = 501"),
        "الوادي");
    EXPECT_EQ(shop.number("select count(*) from barcode where code = 501"), 2);
    EXPECT_EQ(shop.number("select mquan from items where code = 501"), 5);
    EXPECT_EQ(shop.number("select count(*) from till_price where why = N'استيراد ملف'"), 2);
    EXPECT_EQ(shop.number("select price12 from items where code = 900"), 3);
}

TEST_F(ItemImport, RefusesTheWholeFileForALineThatCannotBe) {
    const struct {
        const char* line;
        const char* said;
    } cases[] = {{"501,x,0,,", "صفر"},
                 {"501,x,\"1,5\",,", "فاصلة"},
                 {"501,x,5,6,", "بدون عدد وحداتها"},  // tea has no pack
                 {"502,x,5,,6221031001239", "مسجل لصنف آخر 501"},
                 {"502,x,5,,501", "أيضا كود صنف"},
                 {"abc,x,5,,", "ليس رقما صحيحا"},
                 {"900,,5,,", "الاسم خال"}};
    for (const auto& [line, said] : cases) {
        const goods::ImportPlan planned =
            plan("code,name,price12,price22,barcode\n503,y,21,,\n" + std::string(line) + "\n");
        ASSERT_EQ(planned.problems.size(), 1U) << line;
        EXPECT_EQ(planned.problems.front().line, 3U) << line;
        EXPECT_THAT(planned.problems.front().reason.arabic, HasSubstr(said)) << line;
        EXPECT_FALSE(write(planned).problems.empty());
        EXPECT_EQ(shop.number("select price12 from items where code = 503"), 20) << line;
    }
}

// Between the preview and the import another office changes an item, or takes a barcode or a code.
TEST_F(ItemImport, WritesOnlyWhatWasShown) {
    for (const char* meanwhile : {"update items set price12 = 7.8 where code = 502",
                                  "insert into barcode (bar,code,scode) select 'AB8',503,1",
                                  "insert into items (code,[name]) select 900,N'أول'"}) {
        shop.sql("update items set price12 = 7.35 where code = 502");
        const goods::ImportPlan planned =
            plan("code,name,price12,barcode\n501,,12,\n502,,8,ab8\n900,جديد,3,\n");
        shop.sql(meanwhile);
        const goods::ImportOutcome outcome = write(planned);
        ASSERT_EQ(outcome.problems.size(), 1U) << meanwhile;
        EXPECT_EQ(outcome.problems.front().line, std::string(meanwhile).find("900") < 99 ? 4U : 3U);
        EXPECT_EQ(prices(501), "8 10 9.5 96 115");
        shop.sql("delete from barcode where bar = 'AB8'");
    }
}

}  // namespace
