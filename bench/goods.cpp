#include "bench/goods.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

namespace bench {

namespace {

// Juice, milk, tea, coffee, rice, sugar, oil, ghee, flour, pasta, beans, lentils, cheese, yoghurt, butter,
// honey, jam, biscuits, chocolate, sweets, crisps, water, soda, soap, shampoo, washing powder, tissues,
// toothpaste, tuna, chicken, meat, fish, eggs, bread, spices, salt, vinegar, sauce, dates, nuts.
constexpr std::array<std::string_view, 40> kinds = {
    "عصير",  "لبن",  "شاي",  "بن",    "أرز",    "سكر",   "زيت",    "سمن",    "دقيق",     "مكرونة",
    "فول",   "عدس",  "جبنة", "زبادي", "زبدة",   "عسل",   "مربى",   "بسكويت", "شوكولاتة", "حلوى",
    "شيبسي", "مياه", "صودا", "صابون", "شامبو",  "مسحوق", "مناديل", "معجون",  "تونة",     "دجاج",
    "لحم",   "سمك",  "بيض",  "خبز",   "بهارات", "ملح",   "خل",     "صلصة",   "تمر",      "مكسرات"};
constexpr std::array<std::string_view, 24> brands = {
    "الواحة", "الريف",  "الفجر",  "النخيل",  "الوادي", "البيت", "السنبلة", "الزهرة",
    "النسيم", "الهلال", "الشروق", "المزرعة", "نجمة",   "واحة",  "ربيع",    "سنابل",
    "مروج",   "ينبوع",  "خيرات",  "بساتين",  "قمر",    "ضياء",  "فرح",     "كنوز"};
// Mango, orange, apple, strawberry, plain, special, light, extra, classic, fine, coarse, gold.
constexpr std::array<std::string_view, 12> sorts = {"مانجو", "برتقال", "تفاح",   "فراولة", "سادة", "خاص",
                                                    "لايت",  "إكسترا", "كلاسيك", "ناعم",   "خشن",  "ذهبي"};
constexpr std::array<int, 8> grams = {50, 100, 200, 250, 400, 500, 750, 1000};

}  // namespace

std::string item_name(std::int64_t code) {
    const std::uint32_t choice = noise(static_cast<std::uint64_t>(code) + 17);
    return fmt::format("{} {} {} {} جم", kinds[choice % kinds.size()], brands[choice / 64 % brands.size()],
                       sorts[choice / 4096 % sorts.size()], grams[choice / 262'144 % grams.size()]);
}

double retail_price(std::int64_t code) {
    return 1 + noise(static_cast<std::uint64_t>(code)) % 800 / 4.0;
}

}  // namespace bench
