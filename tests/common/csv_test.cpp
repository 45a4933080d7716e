#include "common/csv.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Records = std::vector<std::vector<std::string>>;

Records read(std::string_view text, char separator = ',') {
    common::CsvReader reader(text, separator);
    Records records;
    std::vector<std::string> cells;
    while (reader.next(cells))
        records.push_back(cells);
    return records;
}

TEST(Csv, ReadsEveryFormThatProgramsWrite) {
    const struct {
        std::string_view text;
        Records records;
    } cases[] = {
        {"a,b\n1,2\n", {{"a", "b"}, {"1", "2"}}},
        {"a,b\r\n1,2", {{"a", "b"}, {"1", "2"}}},
        {"\xEF\xBB\xBFكود,اسم\n", {{"كود", "اسم"}}},
        {"a,\n,b\n", {{"a", ""}, {"", "b"}}},
        {"\"a,b\",\"c\"\"d\",\"e\nf\"\ng,h,i\n", {{"a,b", "c\"d", "e\nf"}, {"g", "h", "i"}}},
        {"a\n\n\r\nb\n\n", {{"a"}, {"b"}}},
        {"\"\",x\n", {{"", "x"}}},
        {"a 'b' \"c\",d\n", {{"a 'b' \"c\"", "d"}}},
        {"", {}},
        {"\n\n", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(read(c.text), c.records) << c.text;
}

TEST(Csv, NamesTheLineWhereARecordBegins) {
    common::CsvReader reader("a\n\n\"b\nc\"\nd\n");
    std::vector<std::string> cells;
    std::vector<std::size_t> lines;
    while (reader.next(cells))
        lines.push_back(reader.line());
    EXPECT_THAT(lines, testing::ElementsAre(1, 3, 5));
}

TEST(Csv, RefusesQuotesThatDoNotMatch) {
    for (const std::string_view text : {"a\n\"b\n", "a\n\"b\"c\n", "a\n\"b\"\"\n"}) {
        try {
            read(text);
            ADD_FAILURE() << text;
        } catch (const common::CsvError& error) {
            EXPECT_EQ(error.line(), 2U) << text;
        }
    }
}

TEST(Csv, GuessesTheSeparatorFromTheFirstLine) {
    EXPECT_EQ(common::guess_separator("code,name\n1;2;3;4"), ',');
    EXPECT_EQ(common::guess_separator("code;name;price12\n1,2"), ';');
    EXPECT_EQ(common::guess_separator("code\tname\n"), '\t');
    EXPECT_EQ(common::guess_separator("code\n"), ',');
}

TEST(Csv, ReadsBackWhatItWrites) {
    const std::vector<std::string> cells = {"", "a", "b,c", "d\"e", "f\r\ng", "جبنة", " h "};
    EXPECT_EQ(common::csv_record(cells), ",a,\"b,c\",\"d\"\"e\",\"f\r\ng\",جبنة, h \r\n");
    EXPECT_EQ(read(common::csv_record(cells)), Records{cells});
    // Formulas get an apostrophe, which comes off again; numbers and texts with an apostrophe stay.
    const std::pair<const char*, const char*> guarded[] = {
        {"=1+1", "'=1+1"},  {"@a", "'@a"}, {"-x", "'-x"}, {"+", "'+"},
        {"-2.50", "-2.50"}, {"'s", "'s"},  {"''=", "''="}};
    for (const auto& [cell, written] : guarded) {
        EXPECT_EQ(common::csv_record({cell}), std::string(written) + "\r\n");
        EXPECT_EQ(common::without_apostrophe(written), cell);
    }
}

}  // namespace
