// Printing as saving sees it.
#pragma once

#include "printing/receipt.h"

namespace printing {

enum class Form {
    reprint,       // short text form | plain layout
    full,          // full text form | layout with QR
    no_telephone,  // text form without telephone | compact layout
    cash_page,     // full page, cash form
    standard_page  // full page, standard form
};

class ReceiptPrinter {
  public:
    virtual ~ReceiptPrinter() = default;
    // Prints on the port or the system printer, whichever the workstation has chosen. A printer that is
    // missing, refuses or hangs is reported and logged by the printer and never throws: printing never stops
    // a sale. False when nothing came out; the receipt can then be printed again.
    virtual bool print(const Receipt& receipt, Form form) = 0;
    // True when receipts go as text to a port, which is never suppressed.
    virtual bool prints_text() const = 0;
};

}  // namespace printing
