#include "common/typed.h"

#include "common/messages.h"

namespace {

using common::Amount;
namespace message = common::message;

TEST(Typed, AmountsAreWholeHundredths) {
    const struct {
        const char* text;
        std::int64_t hundredths;
        std::string_view refusal;
    } cases[] = {
        {"", 0, {}},
        {"  ", 0, {}},
        {"12", 1200, {}},
        {"12.5", 1250, {}},
        {"١٢٫٣٤", 1234, {}},
        {" 0.29 ", 29, {}},
        {"12.340", 1234, {}},
        {"999999999.99", 99999999999, {}},
        {"12.345", 0, message::too_fine},
        {"0.001", 0, message::too_fine},
        {"-1", 0, message::no_minus},
        {"\u2212١", 0, message::no_minus},
        {"12-5", 0, message::no_minus},
        {"1,250", 0, message::no_comma},
        {"1,250.00", 0, message::no_comma},
        {"١٬٢٥٠", 0, message::no_comma},
        {"12،5", 0, message::no_comma},
        {"1 250", 0, message::wrong_amount},
        {" +5", 0, message::wrong_amount},
        {"12ز5", 0, message::wrong_amount},
        {"1000000000", 0, message::wrong_amount},
        {"12a", 0, message::wrong_amount},
        {"1e3", 0, message::wrong_amount},
    };
    for (const auto& c : cases) {
        const auto read = common::read_amount(c.text);
        EXPECT_EQ(read.value.hundredths(), c.hundredths) << c.text;
        EXPECT_EQ(read.refusal, c.refusal) << c.text;
    }
}

TEST(Typed, CodesFitTheDatabase) {
    EXPECT_EQ(common::read_code(" ٤٢ "), 42);
    EXPECT_EQ(common::read_code("2147483647"), 2147483647);
    for (const char* text : {"", "0", "-3", "+3", "2147483648", "1.5", "x", "99999999999999999999"})
        EXPECT_FALSE(common::read_code(text)) << text;
}

TEST(Typed, DatesAreYearFirstOrDayFirst) {
    const struct {
        const char* text;
        std::optional<common::Date> date;
    } cases[] = {
        {"2026/11/22", common::Date{2026, 11, 22}},
        {"2026-1-5", common::Date{2026, 1, 5}},
        {"20261122", common::Date{2026, 11, 22}},
        {"01/05/2027", common::Date{2027, 5, 1}},
        {"22.11.2026", common::Date{2026, 11, 22}},
        {"٢٢/١١/٢٠٢٦", common::Date{2026, 11, 22}},
        {"2026/11/22 10:30", common::Date{2026, 11, 22}},
        {"11/22/2026", {}},
        {"30/02/2026", {}},
        {"2026/13/01", {}},
        {"1/5", {}},
        {"05/26", {}},
        {"01/05/27", {}},
        {"10:30", {}},
        {"", {}},
        {"yesterday", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(common::read_date(c.text), c.date) << c.text;
}

TEST(Typed, TimesStandAlone) {
    EXPECT_EQ(common::read_time(" ٩:٠٥ "), (common::TimeOfDay{9, 5, 0, 0}));
    EXPECT_EQ(common::read_time("12:30:15 AM"), (common::TimeOfDay{0, 30, 15, 0}));
    for (const char* text : {"", "9", "24:00", "9:60", "2026/11/22 09:05", "2026/11/22", "-1:00"})
        EXPECT_FALSE(common::read_time(text)) << text;
}

TEST(Amounts, RoundOnceAndAddExactly) {
    // Rounded to seven decimals first, to remove the error of binary fractions, and then to two.
    for (const auto& [computed, text] :
         std::initializer_list<std::pair<double, const char*>>{{2.675, "2.68"},
                                                               {-1.005, "-1.01"},
                                                               {0.7 * 1.15, "0.81"},
                                                               {-0.004, "0.00"},
                                                               {-0.05, "-0.05"},
                                                               {-0.0, "0.00"},
                                                               {0.00499994, "0.00"},
                                                               {0.00499995, "0.01"},
                                                               {0.00499996, "0.01"},
                                                               {999'999.995, "1000000.00"},
                                                               {-999'999.9949999, "-999999.99"},
                                                               {1'234'567.005, "1234567.01"}})
        EXPECT_EQ(Amount(computed).text(), text) << computed;
    Amount sum;
    for (int i = 0; i < 1000; ++i)
        sum += Amount(0.1);
    EXPECT_EQ(sum, Amount(100));
    EXPECT_EQ((Amount(41.5) - Amount(2.08)).text(), "39.42");
    EXPECT_EQ((-Amount(129.33)).text(), "-129.33");
    EXPECT_EQ(Amount(1e300).value(), 9e16);
}

}  // namespace
