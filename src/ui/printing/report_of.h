// Reports of the cash room as pages to print.
#pragma once

#include "printing/report.h"

namespace cash {
struct DayReport;
struct ShiftReport;
}  // namespace cash
namespace signin {
struct Session;
}

namespace ui {

// A report of that name with nothing but the shop's letterhead.
printing::Report headed(const char* name, const signin::Session& session);

printing::Report report_of(const cash::ShiftReport& shift, const signin::Session& session);
// The cashier's report of a day.
printing::Report report_of(const cash::DayReport& day, const signin::Session& session);

}  // namespace ui
