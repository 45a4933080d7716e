// The full-page invoice, printed instead of a receipt where the shop has chosen so.
#pragma once

#include <filesystem>
#include <vector>

#include "printing/layout_rows.h"
#include "printing/receipt_printer.h"
#include "printing/report.h"

namespace printing {

// Form::cash_page states what was paid and the change, and asks for no signature. Form::standard_page (any
// other form) names the customer's account instead, has the unit of each line, and ends with lines to sign
// on. Both state the net in words, or in figures in their place where the words do not reach.
Report invoice_report(const Receipt& receipt, Form form, const ReceiptSettings& settings,
                      const std::vector<LayoutRow>& rows, const std::filesystem::path& logo);

}  // namespace printing
