#include "reports/period.h"

#include <algorithm>

namespace reports {

using common::Date;
using database::quoted;
using database::Sql;

namespace {

constexpr PresetName preset_names[] = {
    {Preset::today, "اليوم"},
    {Preset::yesterday, "أمس"},
    {Preset::this_week, "هذا الأسبوع"},
    {Preset::this_month, "هذا الشهر"},
    {Preset::last_month, "الشهر الماضي"},
    {Preset::this_year, "هذه السنة"},
    {Preset::free, "مدة أخرى"},
};

Date first_of_next_month(const Date& day) {
    return day.month == 12 ? Date{day.year + 1, 1, 1} : Date{day.year, day.month + 1, 1};
}

// Days since the last Saturday; 1970/01/01 was a Thursday.
long day_of_week(const Date& day) {
    return ((common::days_from_epoch(day) + 5) % 7 + 7) % 7;
}

}  // namespace

std::span<const PresetName> presets() {
    return preset_names;
}

Period period_of(Preset preset, const Date& today, const Period& chosen) {
    const Date this_month{today.year, today.month, 1};
    const auto from_to = [&](const Date& first, const Date& last) {
        return Period{first, last, chosen.store};
    };
    switch (preset) {
        case Preset::today:
            return from_to(today, today);
        case Preset::yesterday:
            return from_to(common::add_days(today, -1), common::add_days(today, -1));
        case Preset::this_week:
            return from_to(common::add_days(today, -day_of_week(today)), today);
        case Preset::this_month:
            return from_to(this_month, today);
        case Preset::last_month: {
            const Date end = common::add_days(this_month, -1);
            return from_to({end.year, end.month, 1}, end);
        }
        case Preset::this_year:
            return from_to({today.year, 1, 1}, today);
        case Preset::free:
            break;
    }
    return chosen;
}

Period month_of(const Period& period, const Date& first) {
    return {std::max(period.first, first),
            std::min(period.last, common::add_days(first_of_next_month(first), -1)), period.store};
}

std::vector<Period> quarters_of(const Period& period) {
    std::vector<Period> quarters;
    for (Date first = period.first; first <= period.last;) {
        Date next = first_of_next_month(first);
        while (next.month % 3 != 1)
            next = first_of_next_month(next);
        quarters.push_back({first, std::min(period.last, common::add_days(next, -1)), period.store});
        first = next;
    }
    return quarters;
}

Sql in_period(database::Fragment date_column, database::Fragment store_column, const Period& period) {
    Sql condition = Sql(date_column) + " >= " + quoted(period.first) + " and " + date_column + " < " +
                    quoted(common::add_days(period.last, 1));
    if (period.store != 0) condition += Sql(" and ") + store_column + " = " + period.store;
    return condition;
}

}  // namespace reports
