// The demo shop is consistent. Each query must give 0, or a number within the limits beside it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "admin/workbench.h"
#include "common/numbers.h"
#include "common/text.h"
#include "goods/barcodes.h"
#include "shop/rows.h"

namespace {

class DemoData : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        bench = new test::Workbench;
        bench->make_shop(true);
        shop = bench->open().release();
    }
    static void TearDownTestSuite() {
        delete shop;
        delete bench;
    }
    static double number(const std::string& query) {
        return database::number_of(shop->scalar(database::Sql::from_administrator(query)));
    }
    static test::Workbench* bench;
    static database::Connection* shop;
};
test::Workbench* DemoData::bench = nullptr;
database::Connection* DemoData::shop = nullptr;

TEST_F(DemoData, IsConsistent) {
    const char* none[] = {
        // prices and units
        "select count(*) from items where isnull([name],'') = ''",
        "select count(*) from items where isnull(num1,0) <> 1 or isnull(num2,0) <= 0 or isnull(num3,0) < "
        "num2",
        "select count(*) from items where isnull(price11,0) < 0 or isnull(price12,0) <= 0 or "
        "isnull(price13,0) <= 0 or "
        "isnull(price14,0) <= 0 or isnull(price15,0) <= 0",
        "select count(*) from items where isnull(price22,0) <= 0 or isnull(price23,0) <= 0 or "
        "isnull(price24,0) <= 0 or "
        "isnull(price25,0) <= 0 or isnull(price32,0) <= 0 or isnull(price33,0) <= 0 or isnull(price34,0) <= "
        "0 or "
        "isnull(price35,0) <= 0",
        "select count(*) from items where isnull(sale_only,0) = 0 and (price11 <= 0 or price21 < price11 or "
        "price31 < "
        "price21)",
        // retail is the dearest level, and none is below the cost
        "select count(*) from items where price12 < price13 or price13 < price14 or price14 < price15 or "
        "price15 < "
        "price11",
        "select count(*) from items where price22 < price23 or price23 < price24 or price24 < price25 or "
        "price25 < "
        "price21",
        "select count(*) from items where price32 < price33 or price33 < price34 or price34 < price35 or "
        "price35 < "
        "price31",
        // what an item names exists
        "select count(*) from items i left join makers m on i.fact = m.code where m.code is null",
        "select count(*) from items i left join item_types g on i.itype = g.code where g.code is null",
        "select count(*) from barcode b left join items i on b.code = i.code where i.code is null",
        "select count(*) from barcode where scode < 1 or scode > 3",
        "select count(*) from stk s left join items i on s.icode = i.code where i.code is null",
        "select count(*) from stk s left join stocks t on s.stcode = t.code where t.code is null",
        "select count(*) from stk s inner join items i on s.icode = i.code where i.sale_only = 1",
        "select count(*) from stk where quan <= 0 or edate is null",
        "select count(*) from sale_price p left join items i on p.icode = i.code where i.code is null",
        "select count(*) from sale_price p left join sal_prd d on p.sale_prd = d.sale_no where d.sale_no is "
        "null",
        "select count(*) from salver s left join items i on s.icode = i.code where i.code is null",
        "select count(*) from salver where cqty < 0 or cqty > qty",
        "select count(*) from reservd r left join items i on r.icode = i.code where i.code is null",
        "select count(*) from reservd r left join custdata c on r.ccode = c.ccode where c.ccode is null",
        "select count(*) from reservd d left join reservt t on d.rnum = t.rnum where t.rnum is null",
        "select count(*) from till_tile t left join items i on t.icode = i.code where t.place > 0 and i.code "
        "is null",
        "select count(*) from subx s left join mainx m on s.mcode = m.code where m.code is null",
        "select count(*) from cash c left join stocks s on c.stcode = s.code where s.code is null",
        // nothing has been sold yet, so every balance is the opening balance
        "select count(*) from custdata where isnull(cacc,0) <> isnull(copen,0)",
        "select count(*) from vendata where isnull(vacc,0) <> isnull(vopen,0)",
        "select count(*) from sales",
        "select count(*) from shift",
        // the chain of places
        "select count(*) from gover g left join country c on g.ccode = c.ccode where c.ccode is null",
        "select count(*) from cityn n left join gover g on n.cgov = g.cgover where g.cgover is null",
        "select count(*) from dist d left join cityn n on d.ccity = n.ccity where n.ccity is null",
        "select count(*) from custdata u left join dist d on u.dist = d.cdist and u.city = d.ccity where "
        "d.cdist is null",
        "select count(*) from custdata u left join cust_typ t on u.cust_typ = t.code where t.code is null",
        "select count(*) from custdata u left join link l on u.link = l.ccode where l.ccode is null",
        "select count(*) from custdata where grntr = 1 and (isnull(g_name,'') = '' or isnull(g_idno,'') = "
        "'')",
    };
    for (const char* query : none)
        EXPECT_EQ(number(query), 0) << query;
}

TEST_F(DemoData, HasEnoughOfEverything) {
    const struct {
        const char* query;
        double least;
        double most;
    } amounts[] = {
        {"select count(*) from items", 300, 1000},
        {"select count(*) from items where code <= 99999 and [desc] like '%بالكيلو%'", 30, 100},
        {"select count(distinct code) from barcode where scode = 1", 300, 1000},
        {"select count(distinct bar) - count(*) from barcode", 0, 0},
        {"select count(distinct icode) from stk where stcode = 1", 280, 1000},
        {"select count(*) from stk where edate < '2026/11/21'", 0, 0},  // nothing has expired today
        {"select count(*) from stocks", 2, 2},
        {"select count(*) from cash where stcode = 1", 2, 2},
        {"select count(*) from cash where stcode = 2", 2, 2},
        {"select count(*) from sal_prd where sale_from <= '2026/11/21' and sale_to >= '2026/11/21'", 1, 1},
        {"select count(*) from bankdata where isnull(mob,0) = 0", 2, 10},
        {"select count(*) from custdata where isnull(ctype,0) = 0", 5, 50},
        {"select count(*) from custdata where ctype = 1", 1, 50},
        {"select count(*) from codes", 30, 256},
        {"select count(*) from till_tile t join items i on t.icode = i.code where i.[desc] like '%بالكيلو%'",
         20, 60},
    };
    for (const auto& a : amounts) {
        const double found = number(a.query);
        EXPECT_TRUE(found >= a.least && found <= a.most) << a.query << ": " << found;
    }
    for (const char* table :
         {"worker", "boundata", "link", "mainx", "subx", "country", "gover", "cityn", "dist", "cust_typ",
          "cust_cash", "vendata", "news", "salver", "reservd", "unit1"}) {
        EXPECT_GT(number("select count(*) from " + std::string(table)), 1) << table;
    }
}

// Saving takes the batches of an item in the selling store, oldest first.
TEST_F(DemoData, ManyItemsHaveSeveralBatches) {
    const auto rows =
        shop->query("select icode from stk where stcode = 1 group by icode having count(distinct edate) > 1");
    EXPECT_GT(rows.size(), 150U);
}

TEST_F(DemoData, EveryBarcodeHasACorrectCheckDigitAndIsNotAScaleLabel) {
    for (const auto& row : shop->query("select bar from barcode")) {
        EXPECT_TRUE(goods::is_true_ean(row.text("bar"))) << row.text("bar");
        EXPECT_FALSE(row.text("bar").starts_with("2")) << row.text("bar");
    }
}

TEST_F(DemoData, EveryItemHasABarcodeOrIsWeighed) {
    for (const auto& row : shop->query("select * from items where isnull(sale_only,0) = 0")) {
        const bool weighed = row.text("desc").find("بالكيلو") != std::string::npos;
        const double barcodes = number("select count(*) from barcode where code = " + row.text("code"));
        EXPECT_EQ(barcodes == 0, weighed) << row.text("name");
    }
}

TEST_F(DemoData, NamesFitTheReceiptAndAreArabic) {
    for (const auto& row : shop->query("select [name] from items")) {
        const std::string name = row.text("name");
        EXPECT_LE(common::length(name), 50U) << name;
        EXPECT_GE(common::code_points(name).front(), 0x0621U) << name;
    }
}

TEST(DemoMarks, BecomeDaysAndPermissions) {
    const common::Date today{2026, 12, 30};
    EXPECT_EQ(shop::put_in_marks("{today}", today), "2026/12/30");
    EXPECT_EQ(shop::put_in_marks("{today+5}", today), "2027/01/04");
    EXPECT_EQ(shop::put_in_marks("{today-30}", today), "2026/11/30");
    EXPECT_EQ(shop::put_in_marks("{allow:all}", today), std::string(400, '1'));
    EXPECT_EQ(shop::put_in_marks("a {today}", today), "a {today}");
    for (const char* bad : {"{}", "{tomorrow}", "{today+x}"}) {
        EXPECT_THROW(shop::put_in_marks(bad, today), std::invalid_argument) << bad;
    }
}

TEST(DemoRows, CellsMustFitTheirColumns) {
    test::Workbench bench;
    bench.make_shop();
    const auto shop = bench.open();
    for (const char* csv : {"code,name\nx,a\n", "code,colour\n1,a\n", "code,name\n1\n"}) {
        EXPECT_ANY_THROW(shop::load_rows(*shop, {"makers", csv}, {2026, 11, 21})) << csv;
    }
    EXPECT_EQ(shop::load_rows(*shop, {"makers", "code,name\n7,'a''b\n8,\n"}, {2026, 11, 21}), 2);
    EXPECT_EQ(bench.cell("select [name] from makers where code = 7"), "'a''b");
    EXPECT_EQ(bench.cell("select count(*) from makers where [name] is null"), "1");
}

}  // namespace
