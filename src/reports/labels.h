// How the rows of a report are called: days, hours, and the names of codes.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "database/connection.h"
#include "reports/sales_sums.h"

namespace reports {

std::string label_heading(SalesKey key);
bool is_in_time(SalesKey key);

class Labels {
  public:
    Labels(database::Connection& connection, SalesKey key);
    std::string of(std::int64_t key) const;
    // The mark on the axis of a chart: the day of the month, the month, the hour; empty where the label
    // itself serves.
    std::string mark_of(std::int64_t key) const;

  private:
    SalesKey key_;
    std::map<std::int64_t, std::string> names_;
};

// The name of a code, or the code of one that was deleted; `none` for 0.
std::string name_or_code(const std::map<std::int64_t, std::string>& names, std::int64_t code,
                         std::string_view none);

// "السبت" ... of a day.
std::string_view weekday_name(const common::Date& day);
// "2026/11/21 السبت"
std::string day_label(const common::Date& day);

}  // namespace reports
