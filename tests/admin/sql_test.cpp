#include "admin/sql.h"

#include <gtest/gtest.h>

#include "admin/workbench.h"

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
        {{"sql", "update makers set [name] = 'x' where code > 1"}, 0, "", "2 rows changed\n"},
        {{"sql", "delete from makers where code = 1"}, 0, "", "1 row changed\n"},
        {{"sql", "delete from makers where code = 1"}, 0, "", "0 rows changed\n"},
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

}  // namespace
