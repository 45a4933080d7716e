// A report without a table, such as a voucher, on a roll printer.
#pragma once

#include <string>

#include "printing/printer_text.h"
#include "printing/report.h"

namespace printing {

// Sets title, captions, totals, words and signature lines like a text receipt, in lines of at most `width`
// characters. A text that does not fit beside its label continues below it.
std::string text_report(const Report& report, int width, const PrinterCodes& codes);

}  // namespace printing
