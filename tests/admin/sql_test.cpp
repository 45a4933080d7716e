#include "admin/sql.h"

#include <gtest/gtest.h>

namespace {

using database::Null;
using database::Value;

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

TEST(Table, CsvKeepsTextAsItIs) {
    const auto result =
        rows({"name", "when"}, {{Value("a\n\"b\""), Value(common::Moment{{2026, 11, 21}, {9, 5, 0, 0}})},
                                {Value(Null{}), Value("x,y")}});
    EXPECT_EQ(admin::csv_table(result), "name,when\r\n\"a\n\"\"b\"\"\",2026/11/21 09:05:00\r\n,\"x,y\"\r\n");
}

}  // namespace
