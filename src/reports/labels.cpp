#include "reports/labels.h"

#include <cstdio>

#include "database/choices.h"
#include "sales/invoice.h"

namespace reports {

namespace {

constexpr std::string_view weekdays[] = {"السبت",    "الأحد",  "الاثنين", "الثلاثاء",
                                         "الأربعاء", "الخميس", "الجمعة"};

}  // namespace

std::string label_heading(SalesKey key) {
    switch (key) {
        case SalesKey::none:
            break;
        case SalesKey::day:
            return "اليوم";
        case SalesKey::month:
            return "الشهر";
        case SalesKey::hour:
            return "الساعة";
        case SalesKey::cashier:
            return "الكاشير";
        case SalesKey::store:
            return "الفرع";
        case SalesKey::payment:
            return "طريقة الدفع";
    }
    return {};
}

bool is_in_time(SalesKey key) {
    return key == SalesKey::day || key == SalesKey::month || key == SalesKey::hour;
}

std::string_view weekday_name(const common::Date& day) {
    return weekdays[((common::days_from_epoch(day) + 5) % 7 + 7) % 7];
}

std::string day_label(const common::Date& day) {
    return common::date_text(day) + " " + std::string(weekday_name(day));
}

std::string name_or_code(const std::map<std::int64_t, std::string>& names, std::int64_t code,
                         std::string_view none) {
    const auto found = names.find(code);
    if (found != names.end() && !found->second.empty()) return found->second;
    return code == 0 ? std::string(none) : std::to_string(code);
}

Labels::Labels(database::Connection& connection, SalesKey key) : key_(key) {
    if (key == SalesKey::cashier)
        for (const database::Row& row : connection.query("select code, [name] from users"))
            names_.emplace(row.integer("code"), row.text("name"));
    if (key == SalesKey::store)
        for (const common::Choice& store : database::load_stores(connection))
            names_.emplace(store.code, store.name);
}

std::string Labels::of(std::int64_t key) const {
    switch (key_) {
        case SalesKey::none:
            return {};
        case SalesKey::day:
            return day_label(common::date_from_epoch(static_cast<long>(key)));
        case SalesKey::month: {
            const std::string month = std::to_string(key % 12 + 1);
            return std::to_string(key / 12) + (month.size() == 1 ? "/0" : "/") + month;
        }
        case SalesKey::hour: {
            const std::string hour = std::to_string(key);
            return (hour.size() == 1 ? "0" : "") + hour + ":00";
        }
        case SalesKey::payment:
            return std::string(sales::payment_caption(static_cast<sales::PaymentOption>(key)));
        case SalesKey::cashier:
        case SalesKey::store:
            break;
    }
    return name_or_code(names_, key, "غير محدد");  // not given
}

std::string Labels::mark_of(std::int64_t key) const {
    if (key_ == SalesKey::day) return std::to_string(common::date_from_epoch(static_cast<long>(key)).day);
    if (key_ == SalesKey::month) return std::to_string(key % 12 + 1);
    return key_ == SalesKey::hour ? std::to_string(key) : std::string();
}

}  // namespace reports
