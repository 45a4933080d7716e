// Reports of the cash subsystem as pages to print, and the message after printing.
#pragma once

#include <QString>

#include "printing/report.h"
#include "ui/widgets/context.h"

namespace cash {
struct DayReport;
struct ShiftReport;
}  // namespace cash

namespace ui {

printing::Report report_of(const cash::ShiftReport& shift, const signin::Session& session);
// The cashier's report of a day.
printing::Report report_of(const cash::DayReport& day, const signin::Session& session);

// Prints the report of a closed shift. Says so if the printer fails.
void print_shift_report(const cash::ShiftReport& shift, const Context& context);

// Returns what to show after a report has been printed: that it is on paper, or in which file it was kept
// because the workstation has no printer.
QString printed_text(const Context& context);

// Returns in which files receipts and reports were kept since the last call; empty if all are on paper.
QString kept_text(const Context& context);

// Saves a report in the folder `Receipts` beside the program, where all paper goes on a workstation without a
// printer. Returns what to show about it; empty if that failed.
enum class ReportFile { csv, pdf };
QString keep_report(const Context& context, const printing::Report& report, ReportFile kind);

// Shows in a message where a report printed from a list was kept; nothing if it is on paper.
void say_where_kept(const Context& context);

}  // namespace ui
