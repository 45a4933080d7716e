#include "common/amount_in_words.h"

#include <string>
#include <vector>

#include "common/wording.h"

namespace {

TEST(Counted, NounsTakeTheFormOfTheirNumber) {
    constexpr common::Noun item = {"صنف", "صنفان", "أصناف", "صنفا"};
    const std::pair<long long, std::string> cases[] = {
        {0, "0 صنف"},     {1, "صنف واحد"},    {2, "صنفان"},        {3, "3 أصناف"},
        {10, "10 أصناف"}, {11, "11 صنفا"},    {99, "99 صنفا"},     {100, "100 صنف"},
        {102, "102 صنف"}, {103, "103 أصناف"}, {1211, "1211 صنفا"},
    };
    for (const auto& [count, words] : cases)
        EXPECT_EQ(common::counted(count, item), words);
    EXPECT_EQ(common::counted(1, {"قطعة", "قطعتان", "قطع", "قطعة"}), "قطعة واحدة");
}

using common::amount_in_words;
using common::number_in_words;

TEST(Words, NumbersWithTheirPrintedSpacing) {
    const struct {
        float value;
        const char* words;
    } cases[] = {
        {0, ""},
        {1, " واحد"},
        {3, " ثلاثة "},
        {5, " خمسة"},
        {10, ""},
        {11, "أحدعشر "},
        {17, "سبعةعشر "},
        {18, "ثماني عشر "},
        {20, " عشرون "},
        {25, " خمسة و  عشرون "},
        {99, " تسعة و  تسعون "},
        {100, "مائة و "},
        {105, "مائة و  خمسة"},
        {110, "مائة"},
        {111, "مائة و أحدعشر "},
        {120, "مائة و  عشرون "},
        {125, "مائة و  خمسة و  عشرون "},
        {300, "ثلاثمائة  و "},
        {310, "ثلاثمائة "},
        {320, "ثلاثمائة  و  عشرون "},
        {999, "تسعمائة و  تسعة و  تسعون "},
        {1000, ""},
        {32767, ""},
        {0.5F, ""},
        {1.5F, " اثنان"},
        {2.5F, " اثنان"},
        {999.5F, ""},  // goes to the even neighbour 1000
    };
    for (const auto& c : cases)
        EXPECT_EQ(number_in_words(c.value), c.words) << c.value;
}

TEST(Words, EachWordAsItIsPrinted) {
    const struct {
        int first;
        int step;
        std::vector<const char*> words;
    } series[] = {
        {1, 1, {" واحد", " اثنان", " ثلاثة ", " اربعة", " خمسة", " ستة", " سبعة", " ثمانية", " تسعة"}},
        {11,
         1,
         {"أحدعشر ", "أثناعشر ", "ثلاثة عشر ", "اربعة عشر ", "خمسة عشر ", "ستة عشر ", "سبعةعشر ",
          "ثماني عشر ", "تسعة عشر "}},
        {20, 10, {" عشرون ", " ثلاثون ", " اربعون ", " خمسون ", " ستون ", " سبعون ", " ثمانون ", " تسعون "}},
        {110,
         100,
         {"مائة", "مائتان", "ثلاثمائة ", "أربعمائة", "خمسمائة", "ستمائة", "سبعمائة", "ثمانمائة", "تسعمائة"}},
    };
    for (const auto& [first, step, words] : series) {
        int number = first;
        for (const char* word : words) {
            EXPECT_EQ(number_in_words(static_cast<float>(number)), word) << number;
            number += step;
        }
    }
}

TEST(Words, AmountsInPoundsAndPiastres) {
    const struct {
        float amount;
        const char* words;
    } cases[] = {
        {0, "فقط  جنيها لا غير"},
        {5, "فقط  خمسة جنيها لا غير"},
        {100, "فقط مائة و  جنيها لا غير"},
        {12.35F, "فقط أثناعشر  جنيها و  خمسة و  ثلاثون  قرشا لاغير"},
        {12.345F, "فقط أثناعشر  جنيها و  اربعة و  ثلاثون  قرشا لاغير"},  // 34.5 goes to 34
        {12.355F, "فقط أثناعشر  جنيها و  ستة و  ثلاثون  قرشا لاغير"},    // 35.5 goes to 36
        {0.25F, "فقط  جنيها و  خمسة و  عشرون  قرشا لاغير"},
        {7.10F, "فقط  سبعة جنيها و  قرشا لاغير"},   // ten alone is silent
        {1.004F, "فقط  واحد جنيها و  قرشا لاغير"},  // less than half a piastre is not 0
        {2500.75F, "فقط  جنيها و  خمسة و  سبعون  قرشا لاغير"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(amount_in_words(c.amount), c.words) << c.amount;
}

TEST(Words, EveryAmountOfTwoDecimalsNamesItsPiastres) {
    for (int pounds : {0, 1, 99, 150, 999, 32766}) {
        for (int piastres = 1; piastres < 100; ++piastres) {
            const auto amount = static_cast<float>(pounds + piastres / 100.0);
            const std::string expected = "فقط " + number_in_words(static_cast<float>(pounds)) + " جنيها و " +
                                         number_in_words(static_cast<float>(piastres)) + " قرشا لاغير";
            ASSERT_EQ(amount_in_words(amount), expected) << pounds << '.' << piastres;
        }
    }
}

TEST(Words, BeyondSixteenBitsOverflows) {
    EXPECT_NO_THROW(amount_in_words(32767));
    for (const float amount : {32768.0F, 1e9F, -32769.0F, std::numeric_limits<float>::infinity(),
                               std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_THROW(amount_in_words(amount), common::OverflowError) << amount;
    }
}

TEST(SpelledAmount, CountsInWordsUpToBillions) {
    const struct {
        double amount;
        const char* words;
    } cases[] = {
        {0, "فقط صفر جنيها لا غير"},
        {0.5, "فقط خمسون قرشا لا غير"},
        {1, "فقط واحد جنيها لا غير"},
        {10, "فقط عشرة جنيها لا غير"},
        {12.35, "فقط اثنا عشر جنيها وخمسة وثلاثون قرشا لا غير"},
        {100, "فقط مائة جنيها لا غير"},
        {110.1, "فقط مائة وعشرة جنيها وعشرة قرشا لا غير"},
        {0.999, "فقط واحد جنيها لا غير"},
        {1234.5, "فقط ألف ومائتان وأربعة وثلاثون جنيها وخمسون قرشا لا غير"},
        {2000, "فقط ألفان جنيها لا غير"},
        {3021, "فقط ثلاثة آلاف وواحد وعشرون جنيها لا غير"},
        {15000, "فقط خمسة عشر ألفا جنيها لا غير"},
        {200000, "فقط مائتا ألف جنيها لا غير"},
        {1000001, "فقط مليون وواحد جنيها لا غير"},
        {103005007.07, "فقط مائة وثلاثة ملايين وخمسة آلاف وسبعة جنيها وسبعة قرشا لا غير"},
        {999999999.99,
         "فقط تسعمائة وتسعة وتسعون مليونا وتسعمائة وتسعة وتسعون ألفا وتسعمائة وتسعة وتسعون جنيها وتسعة "
         "وتسعون "
         "قرشا لا غير"},
        {1e12, ""},
        {-7.25, "فقط سبعة جنيها وخمسة وعشرون قرشا لا غير"},
    };
    for (const auto& [amount, words] : cases)
        EXPECT_EQ(common::spell_amount(amount), words) << amount;
}

// Where the words of receipts would leave out a part of the amount, those of vouchers are used.
TEST(InvoiceWords, NameEveryAmountWhole) {
    const struct {
        double amount;
        const char* words;
    } cases[] = {
        {0, "فقط صفر جنيها لا غير"},
        {0.35, "فقط خمسة وثلاثون قرشا لا غير"},
        {5, "فقط  خمسة جنيها لا غير"},
        {10, "فقط عشرة جنيها لا غير"},
        {12.1, "فقط اثنا عشر جنيها وعشرة قرشا لا غير"},
        {12.35, "فقط أثناعشر  جنيها و  خمسة و  ثلاثون  قرشا لاغير"},
        {110, "فقط مائة وعشرة جنيها لا غير"},
        {111, "فقط مائة و أحدعشر  جنيها لا غير"},
        {999.99, "فقط تسعمائة و  تسعة و  تسعون  جنيها و  تسعة و  تسعون  قرشا لاغير"},
        {1000, "فقط ألف جنيها لا غير"},
        {40000, "فقط أربعون ألفا جنيها لا غير"},
        {1e12, "فقط 1000000000000.00 جنيها لا غير"},
    };
    for (const auto& [amount, words] : cases)
        EXPECT_EQ(common::invoice_words(common::Amount(amount)), words) << amount;
}

}  // namespace
