// A report without a table, such as a voucher, on a roll printer.
#pragma once

#include <string>

#include "printing/printer_codes.h"
#include "printing/report.h"

namespace printing {

// Title, captions, totals, words and signature lines in lines of at most `width` characters (at least 32), as
// text receipts are set. A text that does not fit beside its label goes on below it.
std::string text_report(const Report& report, int width, const PrinterCodes& codes);

}  // namespace printing
