#include "admin/sql.h"

#include <gtest/gtest.h>

#include "admin/sql_guard.h"
#include "admin/workbench.h"
#include "database/embedded/open.h"

namespace {

using database::Null;
using database::Value;
using test::Workbench;

database::Result rows(std::vector<std::string> names, std::vector<std::vector<Value>> cells) {
    const auto columns = std::make_shared<const database::Columns>(std::move(names));
    std::vector<database::Row> made;
    for (auto& row : cells)
        made.emplace_back(columns, std::move(row));
    return {columns, std::move(made)};
}

TEST(Table, WidthsAreTheTerminals) {
    const struct {
        std::string_view text;
        std::size_t cells;
    } cases[] = {{"", 0}, {"abc", 3}, {"جبنة", 4}, {"جُبْنَة", 4}, {"صـنف", 4}, {"😀", 2}, {"\xff", 1}};
    for (const auto& c : cases)
        EXPECT_EQ(admin::display_width(c.text), c.cells) << c.text;
}

TEST(Table, AlignsColumnsByTheirWidestCell) {
    const auto result =
        rows({"code", "name", "price"}, {{Value(std::int64_t{7}), Value("جُبْنَة"), Value(2.5)},
                                         {Value(std::int64_t{1101}), Value(Null{}), Value(100.0)},
                                         {Value(std::int64_t{2}), Value("a\nb"), Value(Null{})}});
    EXPECT_EQ(admin::aligned_table(result),
              "code  name  price\n"
              "----  ----  -----\n"
              "   7  جُبْنَة    2.5\n"
              "1101  NULL    100\n"
              "   2  a b   NULL\n");
    EXPECT_EQ(admin::aligned_table(rows({"n"}, {})), "n\n-\n");
}

TEST(Sql, PrintsRowsExactly) {
    Workbench bench;
    bench.make_shop();
    bench.sql("insert into makers (code,[name]) values (1,'ندوان')");
    bench.sql("insert into makers (code,[name]) values (20,'a \"b\", c')");
    bench.sql("insert into makers (code) values (300)");
    const struct {
        std::vector<std::string> line;
        int code;
        std::string out;
        std::string err;
    } cases[] = {
        {{"sql", "select code,[name] from makers order by code"},
         0,
         "code  name\n----  --------\n   1  ندوان\n  20  a \"b\", c\n 300  NULL\n(3 rows)\n",
         ""},
        {{"sql", "select code,[name] from makers order by code", "--csv"},
         0,
         "code,name\r\n1,ندوان\r\n20,\"a \"\"b\"\", c\"\r\n300,\r\n",
         ""},
        {{"sql", "select code from makers where code < 0"}, 0, "code\n----\n(0 rows)\n", ""},
        {{"sql", "select count(*) as n from makers"}, 0, "n\n-\n3\n(1 row)\n", ""},
        {{"sql", "update makers set [name] = 'x' where code > 1"},
         0,
         "",
         "the shop as it was is kept in " + bench.file("before-sql-20261121.backup").string() +
             "\n2 rows of makers changed\n"},
        {{"sql", "delete from makers where code = 1"}, 0, "", "1 row of makers changed\n"},
        {{"sql", "delete from makers where code = 1"}, 0, "", "0 rows of makers changed\n"},
    };
    for (const auto& c : cases) {
        const auto run = bench.run(c.line);
        EXPECT_EQ(run.code, c.code) << c.line[1];
        EXPECT_EQ(run.out, c.out) << c.line[1];
        EXPECT_EQ(run.err, c.err) << c.line[1];
    }
    for (const std::string bad :
         {"selec 1", "select * from nowhere", "insert into makers (code) values (20)", ""}) {
        const auto run = bench.run({"sql", bad});
        EXPECT_NE(run.code, 0) << bad;
        EXPECT_NE(run.err, "") << bad;
        EXPECT_EQ(run.out, "") << bad;
    }
}

TEST(Sql, ReadsWhatAStatementDoes) {
    const struct {
        const char* statement;
        bool changes;
        std::vector<std::string> tables;
        std::vector<std::string> dangers;
    } cases[] = {
        {"select * from items where code in (select icode from saledata)", false, {}, {}},
        {"select 'delete from items' as [drop]", false, {}, {}},
        {"with a as (select 1 as n) select * from a", false, {}, {}},
        {"select code into copy_of_items from items", true, {}, {}},
        {"create table spare (code int null)", true, {}, {}},
        {"insert into dbo.makers (code) values (1)", true, {"makers"}, {}},
        {"Update Makers set [name] = 'where'", true, {"Makers"}, {"changes every row of Makers"}},
        {"update makers set code = (select max(code) from items where 1 = 1)",
         true,
         {"makers"},
         {"changes every row of makers"}},
        {"update i set [name] = '' from items as i where i.code = 1", true, {"items"}, {}},
        {"delete top (5) from sales where pnum = 1", true, {"sales"}, {}},
        {"DELETE [sales]", true, {"sales"}, {"deletes every row of sales"}},
        {"delete sales select * from items where code = 1", true, {"sales"}, {"deletes every row of sales"}},
        {"insert makers (code) select code from items where code = 1", true, {"makers"}, {}},
        {"delete from sales delete from saledata where pnum = 1",
         true,
         {"sales", "saledata"},
         {"deletes every row of sales"}},
        {"drop table items", true, {}, {"drops the table items"}},
        {"alter table sales drop column credit_name", true, {}, {"drops the column credit_name"}},
        {"truncate table sales", true, {"sales"}, {"empties the table sales"}},
        {"delete from sales where 'x", true, {}, {"does something that this tool cannot read"}},
    };
    for (const auto& c : cases) {
        const auto effect = admin::effect_of(c.statement);
        EXPECT_EQ(effect.changes, c.changes) << c.statement;
        EXPECT_EQ(effect.tables, c.tables) << c.statement;
        EXPECT_EQ(effect.dangers, c.dangers) << c.statement;
    }
}

TEST(Sql, KeepsTheShopBeforeTheFirstChangeOfADayAndAsks) {
    Workbench bench;
    bench.make_shop();
    const auto copy = bench.file("before-sql-20261121.backup");
    ASSERT_EQ(bench.run({"sql", "select * from makers"}).code, 0);
    EXPECT_FALSE(std::filesystem::exists(copy));
    const auto refused = bench.run({"sql", "delete from users"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_NE(refused.err.find("deletes every row of users; if that is meant, give --yes"), std::string::npos)
        << refused.err;
    EXPECT_EQ(bench.cell("select count(*) from users"), "1");
    for (int day = 1; day <= 8; ++day)
        bench.write("before-sql-2026110" + std::to_string(day) + ".backup", "older");
    ASSERT_EQ(bench.run({"sql", "delete from users", "--yes"}).code, 0);
    // The shop of that moment, and no older copies than six.
    EXPECT_EQ(database::integer_of(database::open_embedded(copy)->scalar("select count(*) from users")), 1);
    EXPECT_TRUE(std::filesystem::exists(bench.file("before-sql-20261103.backup")));
    EXPECT_FALSE(std::filesystem::exists(bench.file("before-sql-20261102.backup")));
    // Names reach the output without control characters for the terminal; CSV contains no formulas.
    bench.sql("insert into makers (code,[name]) values (1,'=1+1')");
    bench.sql("insert into makers (code,[name]) values (2,'a\x1b[2Jb\u202Ec')");
    bench.sql("insert into makers (code,[name]) values (-3,'-x')");
    EXPECT_EQ(bench.run({"sql", "select code,[name] from makers order by code", "--csv"}).out,
              "code,name\r\n-3,'-x\r\n1,'=1+1\r\n2,a[2Jbc\r\n");
}

}  // namespace
