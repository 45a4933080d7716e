// Receipts and slips as text: the bytes that a roll printer without a page driver is sent.
#pragma once

#include <string>

#include "printing/printer_text.h"
#include "printing/receipt_printer.h"
#include "printing/receipt_settings.h"
#include "printing/report.h"

namespace printing {

// A whole receipt in lines of at most `width` characters, from the printer's initialisation to its last feed.
// Form::reprint is the short form, Form::no_telephone leaves out the telephone's line; every other form is
// the full one. Lines end in CR LF. By choice of the shop, units stand in lines below their items, and the
// receipt's code becomes a barcode by the printer's own command.
std::string text_receipt(const Receipt& receipt, Form form, int width, const PrinterCodes& codes,
                         const ReceiptSettings& settings = {});

// A page that shows a printer's line width (a ruler), its Arabic letters in both forms, and double width.
std::string test_print(int width, const PrinterCodes& codes);

// The line width of a text receipt, read off its rules; without rules, the width of a wide roll.
int width_of(std::string_view bytes);

// Sets title, captions, totals, words and signature lines like a text receipt, in lines of at most `width`
// characters. A text that does not fit beside its label continues below it.
std::string text_report(const Report& report, int width, const PrinterCodes& codes);

}  // namespace printing
