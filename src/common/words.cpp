#include "common/words.h"

#include <array>
#include <cmath>
#include <limits>
#include <string_view>

namespace common {

namespace {

using Words = std::array<std::string_view, 10>;

constexpr Words hundreds = {"",        "مائة",   "مائتان",  "ثلاثمائة ", "أربعمائة",
                            "خمسمائة", "ستمائة", "سبعمائة", "ثمانمائة",  "تسعمائة"};
constexpr Words units = {"",      " واحد", " اثنان", " ثلاثة ", " اربعة",
                         " خمسة", " ستة",  " سبعة",  " ثمانية", " تسعة"};
constexpr Words tens = {"",        "",       " عشرون ", " ثلاثون ", " اربعون ",
                        " خمسون ", " ستون ", " سبعون ", " ثمانون ", " تسعون "};
// From 11; the joined spellings are the printed ones.
constexpr Words teens = {"",          "أحدعشر ",  "أثناعشر ", "ثلاثة عشر ", "اربعة عشر ",
                         "خمسة عشر ", "ستة عشر ", "سبعةعشر ", "ثماني عشر ", "تسعة عشر "};
constexpr std::string_view joiner = " و ";

int to_16_bits(float value) {
    const float whole = std::nearbyint(value);  // the default rounding mode: halves to even
    using Range = std::numeric_limits<short>;
    if (!(whole >= Range::min() && whole <= Range::max())) {
        throw OverflowError("an amount in words is beyond 16 bits");
    }
    return static_cast<int>(whole);
}

// The digit's value; a sign counts as no digit.
std::size_t digit(char c) {
    return c >= '0' && c <= '9' ? static_cast<std::size_t>(c - '0') : 0;
}

// The words of the two digits that end a number; `word_before` says whether its hundreds stand already.
void append_two_digits(std::string& words, int number, bool word_before) {
    const auto last = static_cast<std::size_t>(number > 0 ? number % 10 : 0);
    if (word_before && last != 0) words += joiner;
    if (number >= 20) {
        if (last != 0) {
            words += units[last];
            word_before = true;
        }
        if (word_before) words += joiner;
        words += tens[static_cast<std::size_t>(number / 10)];
    } else if (number >= 11) {
        words += teens[last];
    }
}

// Piastres of an amount are as exact as the amount's own single precision: a half that only this has pushed
// aside (12.345 leaves 34.50003) counts as the half that was meant. All else is left as computed.
float piastres_of(float amount, float pounds) {
    const float piastres = (amount - pounds) * 100.0F;
    const float step = std::nextafter(amount, std::numeric_limits<float>::infinity()) - amount;
    const float half = std::floor(piastres) + 0.5F;
    return std::fabs(piastres - half) <= step * 50.0F ? half : piastres;
}

}  // namespace

std::string number_in_words(float value) {
    int number = to_16_bits(value);
    std::string text = std::to_string(number);
    const int passes = text.size() == 1 ? 1 : 2;
    std::string words;
    bool hundreds_written = false;
    for (int pass = 0; pass < passes; ++pass) {
        if (text.size() == 3) {
            words += hundreds[digit(text[0])];
            hundreds_written = true;
            number = static_cast<int>(digit(text[1]) * 10 + digit(text[2]));
            text = std::to_string(number);
        } else if (text.size() == 2) {
            append_two_digits(words, number, hundreds_written);
            return words;
        } else if (text.size() == 1) {
            if (hundreds_written) words += joiner;
            words += units[digit(text[0])];
        }
    }
    return words;
}

std::string amount_in_words(float amount) {
    const float pounds = std::floor(amount);
    const float piastres = piastres_of(amount, pounds);
    const std::string pound_words = number_in_words(pounds);
    const std::string piastre_words = number_in_words(piastres);
    if (piastres != 0) return "فقط " + pound_words + " جنيها و " + piastre_words + " قرشا لاغير";
    return "فقط " + pound_words + " جنيها لا غير";
}

}  // namespace common
