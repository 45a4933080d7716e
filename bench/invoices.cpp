#include "bench/invoices.h"

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

std::int64_t items_with_searched_words(const Sizes& sizes) {
    std::int64_t found = 0;
    for (std::int64_t code = 1; code <= sizes.items(); ++code)
        if (item_name(code).find(" مانجو 500 ") != std::string::npos) ++found;
    return found;
}

double retail_price(std::int64_t code) {
    return 1 + noise(static_cast<std::uint64_t>(code)) % 800 / 4.0;
}

namespace {

// The moment of one of the events, which are spread from 8:00 to 22:00 of each day; the last day ends at
// noon, when the shop is measured.
common::Moment moment_of(std::int64_t n, std::int64_t of) {
    constexpr std::int64_t open = 14 * 3600;
    constexpr std::int64_t all = (Sizes::days - 1) * open + 4 * 3600;
    const std::int64_t at = n * all / (of + 1);
    const auto back = static_cast<long>(Sizes::days - 1 - at / open);
    const int second = 8 * 3600 + static_cast<int>(at % open);
    return {common::add_days(last_day, -back), {second / 3600, second / 60 % 60, second % 60, 0}};
}

int drawer_of(std::uint32_t choice) {
    return 1 + static_cast<int>(choice % static_cast<std::uint32_t>(Sizes::drawers));
}

// Two invoices together have ten lines, so the average is five.
int lines_of(std::int64_t number) {
    const int of_first = 1 + static_cast<int>(noise(static_cast<std::uint64_t>(number + 1) / 2 + 99) % 9);
    return number % 2 == 1 ? of_first : 10 - of_first;
}

}  // namespace

double SoldInvoice::total() const {
    double sum = 0;
    for (const SoldLine& line : lines)
        sum += line.quantity * line.price;
    return sum;
}

SoldInvoice InvoiceMaker::next() {
    const std::int64_t order = ++made_;
    const auto seed = static_cast<std::uint64_t>(order) * 64;
    const std::uint32_t choice = noise(seed) % 100;
    SoldInvoice invoice{};
    invoice.moment = moment_of(order, sizes_.invoices);
    invoice.ctype = choice < 5 ? 2 : 0;
    invoice.vcode =
        choice >= 5 && choice < 15 ? 1 + static_cast<int>(noise(seed + 1) % Sizes::customers) : -1;
    invoice.stype = choice >= 90 ? 1 : choice >= 88 ? 2 : choice == 87 ? 3 : choice == 86 ? 4 : 0;
    invoice.disboun = invoice.stype == 2 ? 5 : invoice.stype == 3 ? 2 : 0;
    invoice.discount = invoice.stype == 0 && noise(seed + 3) % 10 == 0 ? 2.5 : invoice.disboun;
    invoice.drawer = drawer_of(noise(seed + 2));
    invoice.shift = shift_of(invoice.moment.date);
    invoice.number = invoice.ctype == 2 ? ++returns_ : invoice.vcode == -1 ? ++walk_in_ : ++account_;
    const int count = lines_of(order);
    for (int i = 0; i < count; ++i) {
        // A few items make most of the sales.
        const auto at = seed + 8 + static_cast<std::uint64_t>(i) * 2;
        const double share = noise(at) / 4294967296.0;
        const auto item = 1 + static_cast<std::int64_t>(share * share * sizes_.items());
        invoice.lines.push_back({item, 1.0 + noise(at + 1) % 3, retail_price(item)});
    }
    return invoice;
}

Movement movement(const Sizes& sizes, std::int64_t number) {
    const auto seed = static_cast<std::uint64_t>(number) * 7 + 1'000'003;
    return {moment_of(number, sizes.movements()), drawer_of(noise(seed)),
            static_cast<int>(noise(seed + 1) % 2), (100 + noise(seed + 2) % 10'000) / 100.0};
}

}  // namespace bench
