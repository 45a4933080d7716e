#include "common/numbers.h"

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

namespace {

using common::format_amount;
using common::format_decimals;
using common::format_quantity;
using common::parse_integer;
using common::parse_number;
using common::shortest_text;

TEST(Numbers, AmountsRoundTheirShortestFormHalfAwayFromZero) {
    const struct {
        double value;
        const char* amount;
        const char* quantity;
    } cases[] = {
        {0, "0.00", "0.000"},
        {2.675, "2.68", "2.675"},
        {1.005, "1.01", "1.005"},
        {-1.005, "-1.01", "-1.005"},
        {-0.004, "0.00", "-0.004"},
        {-0.0004, "0.00", "0.000"},
        {-0.0, "0.00", "0.000"},
        {0.1 + 0.2, "0.30", "0.300"},
        {99.995, "100.00", "99.995"},
        {999.9996, "1000.00", "1000.000"},
        {-129.33, "-129.33", "-129.330"},
        {1e15 + 0.5, "1000000000000000.50", "1000000000000000.500"},
        {5e-324, "0.00", "0.000"},
        {std::numeric_limits<double>::infinity(), "0.00", "0.000"},
        {std::nan(""), "0.00", "0.000"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(format_amount(c.value), c.amount) << c.value;
        EXPECT_EQ(format_quantity(c.value), c.quantity) << c.value;
        EXPECT_EQ(std::stod(format_amount(c.value)), common::round_decimals(c.value, 2)) << c.value;
    }
    EXPECT_EQ(format_decimals(2.5, 0), "3");
    EXPECT_EQ(format_decimals(0.4, 0), "0");
    EXPECT_EQ(format_decimals(1.0000000005, 9), "1.000000001");
    EXPECT_EQ(format_decimals(1.7976931348623157e308, 0).size(), 309U);
}

TEST(Numbers, ReadWhatPeopleType) {
    const struct {
        const char* text;
        std::optional<double> value;
    } cases[] = {
        {"12", 12},  {" 12.5 ", 12.5}, {"12,5", {}},   {".5", 0.5},    {"5.", 5},    {"-3", -3},
        {"+3", 3},   {"١٢٫٥", 12.5},   {"۱۲٫۵", 12.5}, {"٠٫٤٥", 0.45}, {"-0", 0},    {"007", 7},
        {"", {}},    {" ", {}},        {".", {}},      {"-", {}},      {"--1", {}},  {"+-1", {}},
        {"1e5", {}}, {"1,234.5", {}},  {"1.2.3", {}},  {"12a", {}},    {"0x10", {}}, {"inf", {}},
        {"nan", {}}, {"1 2", {}},      {"1;drop", {}}, {"😀", {}},      {"1'", {}},   {"- 5", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parse_number(c.text), c.value) << '"' << c.text << '"';
    EXPECT_EQ(parse_number(std::string(10'000, '9')), std::nullopt);
    EXPECT_EQ(parse_number("0." + std::string(10'000, '0') + "1"), 0.0);
    EXPECT_EQ(parse_number(std::string_view("1\0002", 3)), std::nullopt);
    EXPECT_FALSE(std::signbit(*parse_number("-0.00")));
}

TEST(Numbers, ReadWholeNumbers) {
    const struct {
        const char* text;
        std::optional<long long> value;
    } cases[] = {
        {"6221031490012", 6221031490012},
        {" ٦٢٢ ", 622},
        {"-7", -7},
        {"+7", 7},
        {"9223372036854775807", std::numeric_limits<long long>::max()},
        {"-9223372036854775808", std::numeric_limits<long long>::min()},
        {"9223372036854775808", {}},
        {"1.0", {}},
        {"+-7", {}},
        {"-+7", {}},
        {"", {}},
        {"-", {}},
        {"12 3", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parse_integer(c.text), c.value) << '"' << c.text << '"';
}

TEST(Numbers, ShortestFormHasNoExponentAndNoNoise) {
    const struct {
        double value;
        const char* text;
    } cases[] = {{2, "2"},
                 {0.45, "0.45"},
                 {-0.0, "0"},
                 {100000000, "100000000"},
                 {1e22, "10000000000000000000000"},
                 {1e-7, "0.0000001"},
                 {1.0 / 4, "0.25"}};
    for (const auto& c : cases)
        EXPECT_EQ(shortest_text(c.value), c.text);
}

TEST(Numbers, StayTheSameInALocaleWithAComma) {
    const char* set = std::setlocale(LC_ALL, "de_DE.UTF-8");
    if (set == nullptr) set = std::setlocale(LC_ALL, "C.UTF-8");
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(format_amount(1234.5), "1234.50");
    EXPECT_EQ(parse_number("1234.5"), 1234.5);
    std::setlocale(LC_ALL, "C");
}

}  // namespace
