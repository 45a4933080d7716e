#include "common/spelled_amount.h"

#include <array>
#include <cmath>
#include <string_view>

#include "common/numbers.h"

namespace common {

namespace {

constexpr std::array<std::string_view, 20> below_twenty = {
    "",          "واحد",     "اثنان",   "ثلاثة",    "أربعة",      "خمسة",     "ستة",
    "سبعة",      "ثمانية",   "تسعة",    "عشرة",     "أحد عشر",    "اثنا عشر", "ثلاثة عشر",
    "أربعة عشر", "خمسة عشر", "ستة عشر", "سبعة عشر", "ثمانية عشر", "تسعة عشر"};
constexpr std::array<std::string_view, 10> tens = {"",      "",     "عشرون", "ثلاثون", "أربعون",
                                                   "خمسون", "ستون", "سبعون", "ثمانون", "تسعون"};
constexpr std::array<std::string_view, 10> hundreds = {"",        "مائة",   "مائتان",  "ثلاثمائة", "أربعمائة",
                                                       "خمسمائة", "ستمائة", "سبعمائة", "ثمانمائة", "تسعمائة"};

// A thousand and its powers: one, two, three to ten of them, and from eleven on.
struct Power {
    long long value;
    std::string_view one, two, few, many;
};
constexpr Power powers[] = {{1'000'000'000, "مليار", "ملياران", "مليارات", "مليارا"},
                            {1'000'000, "مليون", "مليونان", "ملايين", "مليونا"},
                            {1'000, "ألف", "ألفان", "آلاف", "ألفا"}};

void join(std::string& text, std::string_view words) {
    if (!text.empty()) text += " و";
    text += words;
}

// 1 to 999; units before tens, joined by "و".
std::string spell_group(int number) {
    std::string text(hundreds[static_cast<std::size_t>(number / 100)]);
    const int rest = number % 100;
    if (rest >= 20) {
        if (rest % 10 != 0) join(text, below_twenty[static_cast<std::size_t>(rest % 10)]);
        join(text, tens[static_cast<std::size_t>(rest / 10)]);
    } else if (rest > 0) {
        join(text, below_twenty[static_cast<std::size_t>(rest)]);
    }
    return text;
}

std::string spell_power(int count, const Power& power) {
    if (count == 1) return std::string(power.one);
    if (count == 2) return std::string(power.two);
    std::string text = spell_group(count);
    const int rest = count % 100;
    if (rest == 0) {
        if (count == 200) text = "مائتا";  // the dual loses its ending before its noun
        return text + ' ' + std::string(power.one);
    }
    return text + ' ' +
           std::string(rest >= 3 && rest <= 10 ? power.few
                       : rest >= 11            ? power.many
                                               : power.one);
}

std::string spell(long long number) {
    std::string text;
    for (const Power& power : powers) {
        const auto count = static_cast<int>(number / power.value);
        if (count > 0) join(text, spell_power(count, power));
        number %= power.value;
    }
    if (number > 0) join(text, spell_group(static_cast<int>(number)));
    return text.empty() ? "صفر" : text;
}

}  // namespace

std::string spell_amount(double amount) {
    const double rounded = round_decimals(std::fabs(amount), 2);
    if (!(rounded < 1e12)) return {};
    const long long all = std::llround(rounded * 100);
    const long long pounds = all / 100;
    const long long piastres = all % 100;
    std::string text;
    if (pounds > 0 || piastres == 0) text = spell(pounds) + " جنيها";
    if (piastres > 0) join(text, spell(piastres) + " قرشا");
    return "فقط " + text + " لا غير";
}

}  // namespace common
