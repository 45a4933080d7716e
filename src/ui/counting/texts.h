// Figures of stock as the pages of counting write them.
#pragma once

#include "common/date_time.h"
#include "common/numbers.h"
#include "ui/widgets/text.h"

namespace ui {

// A quantity in base units: "12", "0.45".
inline std::string quantity_text(double quantity) {
    return common::shortest_text(common::round_decimals(quantity, 3));
}
// The date of a batch; "بدون" (none) for goods without one.
inline std::string expiry_text(const std::optional<common::Date>& expiry) {
    if (!expiry) return "";
    return *expiry == common::no_expiry ? "بدون" : common::date_text(*expiry);
}
// "2026/11/21 10:42".
inline std::string minute_text(const common::Moment& moment) {
    return common::date_text(moment.date) + " " + common::time_text(moment.time).substr(0, 5);
}

}  // namespace ui
