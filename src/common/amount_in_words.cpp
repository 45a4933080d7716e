#include "common/amount_in_words.h"

#include <array>
#include <cmath>
#include <limits>
#include <string_view>

#include "common/wording.h"

namespace common {

namespace {

using Words = std::array<std::string_view, 10>;

// The words of receipts, with the blanks and the joined spellings that receipts show.
constexpr Words hundreds = {"",        "مائة",   "مائتان",  "ثلاثمائة ", "أربعمائة",
                            "خمسمائة", "ستمائة", "سبعمائة", "ثمانمائة",  "تسعمائة"};
constexpr Words units = {"",      " واحد", " اثنان", " ثلاثة ", " اربعة",
                         " خمسة", " ستة",  " سبعة",  " ثمانية", " تسعة"};
constexpr Words tens = {"",        "",       " عشرون ", " ثلاثون ", " اربعون ",
                        " خمسون ", " ستون ", " سبعون ", " ثمانون ", " تسعون "};
// From 11.
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

// The value of a digit; 0 for a sign.
std::size_t digit(char c) {
    return c >= '0' && c <= '9' ? static_cast<std::size_t>(c - '0') : 0;
}

// Appends the words of the last two digits. `word_before` is true if the hundreds are written already.
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

// The piastres of an amount. Single precision can miss a half (12.345 leaves 34.50003); a value so close to a
// half counts as that half, every other value stays as computed.
float piastres_of(float amount, float pounds) {
    const float piastres = (amount - pounds) * 100.0F;
    const float step = std::nextafter(amount, std::numeric_limits<float>::infinity()) - amount;
    const float half = std::floor(piastres) + 0.5F;
    return std::fabs(piastres - half) <= step * 50.0F ? half : piastres;
}

// The words of vouchers.
constexpr std::array<std::string_view, 20> below_twenty = {
    "",          "واحد",     "اثنان",   "ثلاثة",    "أربعة",      "خمسة",     "ستة",
    "سبعة",      "ثمانية",   "تسعة",    "عشرة",     "أحد عشر",    "اثنا عشر", "ثلاثة عشر",
    "أربعة عشر", "خمسة عشر", "ستة عشر", "سبعة عشر", "ثمانية عشر", "تسعة عشر"};
constexpr Words whole_tens = {"",      "",     "عشرون", "ثلاثون", "أربعون",
                              "خمسون", "ستون", "سبعون", "ثمانون", "تسعون"};
constexpr Words whole_hundreds = {"",        "مائة",   "مائتان",  "ثلاثمائة", "أربعمائة",
                                  "خمسمائة", "ستمائة", "سبعمائة", "ثمانمائة", "تسعمائة"};

// A thousand and its powers.
struct Power {
    long long value;
    Noun noun;
};
constexpr Power powers[] = {{1'000'000'000, {"مليار", "ملياران", "مليارات", "مليارا"}},
                            {1'000'000, {"مليون", "مليونان", "ملايين", "مليونا"}},
                            {1'000, {"ألف", "ألفان", "آلاف", "ألفا"}}};

void join(std::string& text, std::string_view words) {
    if (!text.empty()) text += " و";
    text += words;
}

// 1 to 999; units before tens, joined by "و".
std::string spell_group(int number) {
    std::string text(whole_hundreds[static_cast<std::size_t>(number / 100)]);
    const int rest = number % 100;
    if (rest >= 20) {
        if (rest % 10 != 0) join(text, below_twenty[static_cast<std::size_t>(rest % 10)]);
        join(text, whole_tens[static_cast<std::size_t>(rest / 10)]);
    } else if (rest > 0) {
        join(text, below_twenty[static_cast<std::size_t>(rest)]);
    }
    return text;
}

std::string spell_power(int count, const Noun& power) {
    if (count == 1) return std::string(power.one);
    if (count == 2) return std::string(power.two);
    // The dual loses its ending before its noun.
    return (count == 200 ? "مائتا" : spell_group(count)) + ' ' + std::string(form_after(count, power));
}

std::string spell(long long number) {
    std::string text;
    for (const Power& power : powers) {
        const auto count = static_cast<int>(number / power.value);
        if (count > 0) join(text, spell_power(count, power.noun));
        number %= power.value;
    }
    if (number > 0) join(text, spell_group(static_cast<int>(number)));
    return text.empty() ? "صفر" : text;
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

std::string spell_amount(double amount) {
    if (!std::isfinite(amount)) return {};
    const std::int64_t all = Amount(std::fabs(amount)).hundredths();
    if (all >= 100'000'000'000'000) return {};
    const long long pounds = all / 100;
    const long long piastres = all % 100;
    std::string text;
    if (pounds > 0 || piastres == 0) text = spell(pounds) + " جنيها";
    if (piastres > 0) join(text, spell(piastres) + " قرشا");
    return "فقط " + text + " لا غير";
}

namespace {

// Receipts have no word for a ten alone, nor for thousands.
bool receipts_name(std::int64_t number) {
    return number > 0 && number < 1000 && number % 100 != 10;
}

}  // namespace

std::string invoice_words(Amount amount) {
    const std::int64_t pounds = amount.hundredths() / 100;
    const std::int64_t piastres = amount.hundredths() % 100;
    if (receipts_name(pounds) && (piastres == 0 || receipts_name(piastres)))
        return amount_in_words(static_cast<float>(amount.value()));
    const std::string words = spell_amount(amount.value());
    return words.empty() ? "فقط " + amount.text() + " جنيها لا غير" : words;
}

}  // namespace common
