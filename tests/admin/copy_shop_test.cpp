#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "admin/workbench.h"

namespace {

using test::Workbench;
using testing::HasSubstr;

TEST(CopyShop, EveryRowOfEveryTableIsThere) {
    Workbench bench;
    bench.make_shop(true);
    // What only this shop has: a table, a column and awkward cells.
    bench.sql("create table extra (a int null, [b c] nvarchar(20) null)");
    bench.sql("insert into extra (a,[b c]) values (null,'ع''ربي')");
    bench.sql("alter table items add colour nvarchar(30) null");
    bench.sql("update items set colour = 'أخضر' where code = 1101");
    bench.sql("insert into shift (stcode,cash_no,scode,s_date) values (1,1,1,'2026/11/21 08:30:15')");
    const auto run = bench.run({"copy-shop", "other"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("every count agrees"));
    const auto here = bench.open();
    const auto there = admin::open_place(bench.file("other"), admin::read_place(bench.file("other")));
    for (const std::string& table : here->tables())
        EXPECT_TRUE(test::rows_of(*here, table) == test::rows_of(*there, table)) << table;
    EXPECT_EQ(Workbench::run_in(bench.file("other"), {"check"}).code, 0);
}

TEST(CopyShop, ManyRowsGoInSlices) {
    Workbench bench;
    bench.make_shop();
    {
        const auto shop = bench.open();
        shop->execute("begin transaction");
        for (int i = 0; i < 50001; ++i) {
            shop->execute("insert into dailyexp ([value],expdate) values (?,?)",
                          {database::Value(double{1}),
                           i % 7 == 0 ? database::Value(database::Null{})
                                      : database::Value(common::Moment{{2026, 1, 1 + i % 28}, {}})});
        }
        shop->execute("commit transaction");
    }
    const auto run = bench.run({"copy-shop", "other"});
    ASSERT_EQ(run.code, 0) << run.err;
    const auto there = Workbench::run_in(
        bench.file("other"),
        {"sql", "select count(*) as n,sum([value]) as s,count(expdate) as d from dailyexp", "--csv"});
    EXPECT_EQ(there.out, "n,s,d\r\n50001,50001,42858\r\n");
}

TEST(CopyShop, NamesTheRowThatIsRefused) {
    Workbench bench;
    bench.make_shop();
    bench.sql("drop table makers");
    bench.sql("create table makers (code int null,[name] nvarchar(100) null)");
    bench.sql("insert into makers (code) values (1),(2),(1),(3)");
    const auto run = bench.run({"copy-shop", "other"});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("row 3 of the table makers is refused there: "));
    EXPECT_FALSE(std::filesystem::exists(bench.file("other")));
}

TEST(CopyShop, RefusesAPlaceThatIsTaken) {
    Workbench bench;
    bench.make_shop();
    EXPECT_EQ(bench.run({"copy-shop", "."}).code, 1);
    ASSERT_EQ(bench.run({"copy-shop", "other"}).code, 0);
    const auto again = bench.run({"copy-shop", "other"});
    EXPECT_EQ(again.code, 1);
    EXPECT_THAT(again.err, HasSubstr("belongs to a shop already"));
}

}  // namespace
