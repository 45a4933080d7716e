// Statements joined from pieces, and values read from cells.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "database/sql.h"
#include "database/value.h"

namespace {

using database::quoted;
using database::Sql;
using database::Value;

TEST(Statement, PiecesCannotBreakOutOfTheirPlaces) {
    EXPECT_EQ((Sql("where a = ") + 5 + " and b = " + quoted("d'Or'; drop table t--")).text(),
              "where a = 5 and b = 'd''Or''; drop table t--'");
    EXPECT_EQ((Sql("a-") + -1).text(), "a- -1") << "two dashes would begin a comment";
    EXPECT_EQ((Sql("a-") + -0.5).text(), "a- -0.5");
    EXPECT_EQ((Sql("a-") + -0.0).text(), "a-0");
    EXPECT_EQ((Sql("a=") + 0.1 + "," + 100.0 + "," + 1e300).text(), "a=0.1,100,1e+300");
    EXPECT_EQ((Sql("a=") + std::numeric_limits<std::int64_t>::min()).text(), "a=-9223372036854775808");
    EXPECT_THROW(Sql("a=") + std::numeric_limits<double>::infinity(), std::invalid_argument);
    EXPECT_THROW(Sql("a=") + std::nan(""), std::invalid_argument);
    EXPECT_EQ((Sql("d=") + quoted(common::Date{2026, 1, 2}) + quoted(common::TimeOfDay{3, 4, 5, 6}) +
               quoted(common::Moment{{2026, 11, 21}, {10, 42, 0, 0}}))
                  .text(),
              "d='2026/01/02''03:04:05''2026/11/21 10:42:00'");
}

TEST(Statement, CellsReadAsWhatIsAsked) {
    const Value null = database::Null{};
    const Value moment = common::Moment{{2026, 11, 21}, {10, 42, 0, 0}};
    const struct {
        Value value;
        double number;
        std::int64_t integer;
        const char* text;
    } cases[] = {
        {null, 0, 0, ""},
        {std::int64_t{-7}, -7, -7, "-7"},
        {2.5, 2.5, 2, "2.5"},
        {-2.9, -2.9, -2, "-2.9"},
        {1e300, 1e300, std::numeric_limits<std::int64_t>::max(), nullptr},
        {std::nan(""), 0, 0, nullptr},
        {std::string("12"), 12, 12, "12"},
        {std::string("9007199254740993"), 9007199254740992.0, 9007199254740993, "9007199254740993"},
        {std::string("A12"), 0, 0, "A12"},
        {moment, 0, 0, "2026/11/21 10:42:00"},
    };
    for (const auto& [value, number, integer, text] : cases) {
        EXPECT_EQ(database::integer_of(value), integer);
        if (text == nullptr) continue;
        EXPECT_EQ(database::number_of(value), number);
        EXPECT_EQ(database::text_of(value), text);
    }
    EXPECT_EQ(database::moment_of(moment), std::get<common::Moment>(moment));
    EXPECT_EQ(database::moment_of(std::string("2026-11-21")), (common::Moment{{2026, 11, 21}, {}}));
    EXPECT_EQ(database::moment_of(std::string("x")), common::Moment{});
}

}  // namespace
