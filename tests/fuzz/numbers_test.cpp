// Random texts in number and date fields, and random numbers shown and read again.
#include "common/numbers.h"

#include <cmath>
#include <cstring>
#include <random>

#include "common/date_time.h"

namespace {

std::string random_text(std::mt19937& random) {
    static const std::string pieces[] = {
        "0", "1", "9",    "٣",    "۵",  ".",    ",",  "٫",  "-",
        "+", " ", "\t",   "e",    "x",  "'",    ";",  "/",  ":",
        "T", "😀", "\xD9", "\xFF", "PM", "2026", "00", "12", std::string(1, '\0')};
    std::string text;
    for (auto left = random() % 14; left > 0; --left)
        text += pieces[random() % std::size(pieces)];
    return text;
}

TEST(NumbersFuzz, WhatIsReadIsFiniteAndReadsBack) {
    std::mt19937 random(1);
    int read = 0;
    for (int i = 0; i < 200'000; ++i) {
        const std::string text = random_text(random);
        if (const auto value = common::parse_number(text)) {
            ++read;
            ASSERT_TRUE(std::isfinite(*value)) << text;
            ASSERT_EQ(common::parse_number(common::shortest_text(*value)), *value) << text;
        }
        if (const auto whole = common::parse_integer(text)) {
            ASSERT_EQ(common::parse_integer(std::to_string(*whole)), *whole) << text;
            ASSERT_TRUE(common::parse_number(text)) << text;
        }
    }
    EXPECT_GT(read, 1000);
}

TEST(NumbersFuzz, EveryDoubleIsShownWithinHalfAStep) {
    std::mt19937_64 random(2);
    for (int i = 0; i < 200'000; ++i) {
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        const std::string text = common::format_amount(value);
        ASSERT_EQ(text[text.size() - 3], '.') << value;
        if (!std::isfinite(value)) continue;
        ASSERT_EQ(common::parse_number(common::shortest_text(value)).value_or(-1), value);
        if (std::fabs(value) > 1e12) continue;
        const double shown = common::round_decimals(value, 2);
        ASSERT_LE(std::fabs(shown - value), 0.005 + std::fabs(value) * 1e-15) << value;
        ASSERT_EQ(common::round_decimals(shown, 2), shown) << value;
        ASSERT_EQ(common::round_decimals(-value, 2), -shown) << value;
    }
}

TEST(NumbersFuzz, MomentsThatAreReadReadBack) {
    std::mt19937 random(3);
    int read = 0;
    const std::string pieces[] = {"2026", "20261121", "/", "-", ".",  "1",  "02", "28", "31",
                                  "12",   ":",        " ", "T", "PM", "am", "59", "x",  "٣"};
    for (int i = 0; i < 300'000; ++i) {
        std::string text;
        for (auto left = random() % 12; left > 0; --left)
            text += pieces[random() % std::size(pieces)];
        const auto moment = common::parse_moment(text);
        if (!moment) continue;
        ++read;
        common::Moment whole = *moment;
        whole.time.millisecond = 0;
        ASSERT_TRUE(common::is_valid(whole.date)) << text;
        ASSERT_EQ(common::parse_moment(common::moment_text(whole)), whole) << text;
    }
    EXPECT_GT(read, 1000);
}

}  // namespace
