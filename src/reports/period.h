// The days that a report covers, and the ways to choose them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "common/date_time.h"
#include "database/sql.h"

namespace reports {

struct Period {
    common::Date first;
    common::Date last;       // with it
    std::int64_t store = 0;  // 0 is every store
};

enum class Preset { today, yesterday, this_week, this_month, last_month, this_year, free };
struct PresetName {
    Preset preset;
    std::string_view caption;
};
std::span<const PresetName> presets();
// The days of a preset; those given for `free`. A week begins on Saturday.
Period period_of(Preset preset, const common::Date& today, const Period& chosen);

// The part of the period that lies in the month that begins on `first`.
Period month_of(const Period& period, const common::Date& first);

// The period in parts of a calendar quarter, so that long work can report progress and be ended between two
// parts.
std::vector<Period> quarters_of(const Period& period);

// The condition that a row's day, in the column, lies in the period; and its store, in `stcode`.
database::Sql in_period(database::Fragment date_column, database::Fragment store_column,
                        const Period& period);

}  // namespace reports
