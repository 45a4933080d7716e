#include "common/date_time.h"

namespace {

using common::Date;
using common::Moment;
using common::parse_moment;

TEST(DateTime, ReadsTheFormsThatTheDatabaseAccepts) {
    const Date day{2026, 3, 9};
    const struct {
        const char* text;
        Moment moment;
    } cases[] = {
        {"2026/03/09", {day, {}}},
        {"2026-3-9", {day, {}}},
        {"2026.03.09", {day, {}}},
        {"20260309", {day, {}}},
        {"03/09/2026", {day, {}}},
        {"3-9-2026", {day, {}}},
        {"  2026/03/09  ", {day, {}}},
        {"2026/03/09 14:05", {day, {14, 5, 0, 0}}},
        {"2026/03/09 14:05:06", {day, {14, 5, 6, 0}}},
        {"2026-03-09T14:05:06.5", {day, {14, 5, 6, 500}}},
        {"2026-03-09 14:05:06.123456", {day, {14, 5, 6, 123}}},
        {"20260309 02:05 PM", {day, {14, 5, 0, 0}}},
        {"2026/03/09 12:05 AM", {day, {0, 5, 0, 0}}},
        {"2026/03/09 12:05pm", {day, {12, 5, 0, 0}}},
        {"03/09/2026 00:00:00", {day, {}}},
        {"2:05:06 PM", {{1900, 1, 1}, {14, 5, 6, 0}}},
        {"23:59", {{1900, 1, 1}, {23, 59, 0, 0}}},
        {"2024/02/29", {{2024, 2, 29}, {}}},
        {"9999/12/31", {{9999, 12, 31}, {}}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parse_moment(c.text), c.moment) << c.text;
}

TEST(DateTime, RefusesOtherTexts) {
    for (const char* text : {"",
                             " ",
                             "today",
                             "2026",
                             "2026/13/01",
                             "2026/02/29",
                             "2026/00/10",
                             "2026/1/0",
                             "1752/12/31",
                             "2026/03-09",
                             "2026/03",
                             "09/03/26",
                             "202603091",
                             "2026/03/09 24:00",
                             "2026/03/09 12:60",
                             "2026/03/09 13:00 PM",
                             "2026/03/09 0:05 AM",
                             "2026/03/09 12",
                             "2026/03/09x",
                             "2026/03/09 12:00x",
                             "12:",
                             "12:00:",
                             "12:00:00.",
                             "-2026/03/09",
                             "10000/01/01",
                             "2026/03/09'",
                             "٢٠٢٦/٠٣/٠٩"}) {
        EXPECT_EQ(parse_moment(text), std::nullopt) << '"' << text << '"';
    }
}

TEST(DateTime, TextFormsReadBack) {
    const Moment moment{{2026, 11, 5}, {0, 5, 9, 0}};
    EXPECT_EQ(common::moment_text(moment), "2026/11/05 00:05:09");
    EXPECT_EQ(parse_moment(common::moment_text(moment)), moment);
    const struct {
        common::TimeOfDay time;
        const char* text;
    } clock[] = {{{0, 5, 0, 0}, "12:05 AM"},
                 {{11, 59, 0, 0}, "11:59 AM"},
                 {{12, 0, 0, 0}, "12:00 PM"},
                 {{13, 7, 0, 0}, "01:07 PM"}};
    for (const auto& c : clock)
        EXPECT_EQ(common::twelve_hour_text(c.time), c.text);
}

TEST(DateTime, CountsDaysOverMonthsAndLeapYears) {
    EXPECT_EQ(common::days_from_epoch({1970, 1, 1}), 0);
    EXPECT_EQ(common::days_from_epoch({1969, 12, 31}), -1);
    EXPECT_EQ(common::add_days({2024, 2, 28}, 1), (Date{2024, 2, 29}));
    EXPECT_EQ(common::add_days({2026, 12, 31}, 1), (Date{2027, 1, 1}));
    EXPECT_EQ(common::add_days({2026, 3, 1}, -1), (Date{2026, 2, 28}));
    EXPECT_EQ(common::next_second({{2026, 12, 31}, {23, 59, 59, 500}}), (Moment{{2027, 1, 1}, {}}));
    EXPECT_EQ(common::next_second({{2026, 11, 21}, {10, 59, 59, 0}}),
              (Moment{{2026, 11, 21}, {11, 0, 0, 0}}));
    for (long day = common::days_from_epoch({1753, 1, 1}); day < 2'932'897; day += 997) {
        EXPECT_EQ(common::days_from_epoch(common::date_from_epoch(day)), day);
    }
}

}  // namespace
