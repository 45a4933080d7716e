#include "common/text.h"

#include "common/code_page.h"
#include "common/search.h"

namespace {

using common::code_points;
using common::utf8;

TEST(Text, WidthsCountCharacters) {
    EXPECT_EQ(common::length("بقالة"), 5U);
    EXPECT_EQ(common::left("بقالة النور", 5), "بقالة");
    EXPECT_EQ(common::right("بقالة النور", 5), "النور");
    EXPECT_EQ(common::left("ab", 9), "ab");
    EXPECT_EQ(common::right("ab", 9), "ab");
    EXPECT_EQ(common::right("a😀b", 2), "😀b");
    EXPECT_EQ(common::column_width("بقالة"), 5U);
    EXPECT_EQ(common::column_width("a😀b"), 4U);
    EXPECT_EQ(common::cut_to_column("a😀b", 3), "a😀");
    EXPECT_EQ(common::printable("\x1b[1mسوق\u200F \u202Eب\u200Cج\u2069\t\u0085"), "[1mسوق ب\u200Cج");
    EXPECT_EQ(common::cut_to_column("a😀b", 2), "a");
    EXPECT_EQ(common::cut_to_column("بقالة النور", 5), "بقالة");
}

TEST(Text, MalformedBytesBecomeReplacementCharacters) {
    const struct {
        std::string bytes;
        std::u32string points;
    } cases[] = {
        {"a\xFFz", U"a\uFFFDz"},
        {"\xD8", U"\uFFFD"},
        {"\xD8z", U"\uFFFDz"},
        {"\xE2\x82", U"\uFFFD\uFFFD"},
        {"\xC0\xAF", U"\uFFFD\uFFFD"},                      // overlong "/"
        {"\xE0\x80\xAF", U"\uFFFD\uFFFD\uFFFD"},            // overlong, three bytes
        {"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},            // half of a surrogate pair
        {"\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last character
        {"\xF0\x9F\x98\x80", U"\U0001F600"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(code_points(c.bytes), c.points);
        EXPECT_EQ(common::length(c.bytes), c.points.size());
    }
    EXPECT_EQ(utf8(static_cast<char32_t>(0xD800)), "\uFFFD");
}

TEST(Text, EveryCharacterConvertsBothWays) {
    for (char32_t c = 1; c <= 0x10FFFF; c += (c < 0x3000 ? 1 : 37)) {
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        ASSERT_EQ(code_points(utf8(c)), std::u32string(1, c)) << static_cast<unsigned>(c);
    }
}

TEST(Text, TrimAndCase) {
    EXPECT_EQ(common::trim(" \t a b \r\n"), "a b");
    EXPECT_EQ(common::trim(" \t\r\n"), "");
    EXPECT_EQ(common::trim_right("a \t  "), "a \t");
    EXPECT_TRUE(common::equal_ignoring_case("Data.DAT", "data.dat"));
    EXPECT_FALSE(common::equal_ignoring_case("data", "data "));
    EXPECT_FALSE(common::equal_ignoring_case("@", "`"));  // differ by the bit that letters differ by
    EXPECT_EQ(common::lower_ascii("ABÇ سZ"), "abÇ سz");
}

TEST(CodePage, ArabicIn1256) {
    // From the code page's table: ا C7, ب C8, ة C9, س D3, ي ED, پ 81, € 80, ، A1.
    EXPECT_EQ(common::to_code_page_1256("ابةسي"), "\xC7\xC8\xC9\xD3\xED");
    EXPECT_EQ(common::from_code_page_1256("\x81\x80\xA1 A"), "پ€، A");
    EXPECT_EQ(common::to_code_page_1256("a😀中b\xFF"), "a??b?");
    EXPECT_EQ(common::code_in_page_1256(U'中'), std::nullopt);
}

TEST(CodePage, EveryByteSurvives) {
    std::string all;
    for (int code = 0; code < 256; ++code)
        all += static_cast<char>(code);
    EXPECT_EQ(common::to_code_page_1256(common::from_code_page_1256(all)), all);
}

TEST(Search, FoldsWhatNobodyTellsApart) {
    const struct {
        const char *text, *folded;
    } cases[] = {
        {"أإآٱا", "ااااا"},         {"قَهْوَة سادَّة", "قهوه ساده"}, {"مـــصطفى", "مصطفي"}, {"٠۹ ۴٥", "09 45"},
        {"ÀÉß Ωω Жж", "àéß ωω жж"}, {"a\xFFz", "a\uFFFDz"},     {"رؤى شئ", "رؤي شئ"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(common::folded(c.text), c.folded) << c.text;
    EXPECT_THAT(common::search_words("  قَهوة\t AB ـ "), testing::ElementsAre("قهوه", "ab"));
    EXPECT_TRUE(common::contains_words(common::folded("Abc قهوة"), common::search_words("قهوه a")));
    EXPECT_FALSE(common::contains_words(common::folded("قهوة"), common::search_words("قهوه بن")));
}

}  // namespace
