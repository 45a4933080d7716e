// Reports of the cash room as pages to print.
#pragma once

#include "printing/report.h"

namespace cash {
struct ShiftReport;
}
namespace signin {
struct Session;
}

namespace ui {

printing::Report report_of(const cash::ShiftReport& shift, const signin::Session& session);

}  // namespace ui
