// The forms of a receipt, and its printer as the sales subsystem sees it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "common/ports.h"
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
    // Prints on the port or the system printer, whichever the workstation has chosen. Never throws, because
    // printing must not stop a sale, and does not wait for a slow printer. Returns false after showing and
    // logging why nothing was printed; the receipt can then be printed again.
    virtual bool print(const Receipt& receipt, Form form) = 0;
    // The files that receipts were kept in since the last call, because there is no printer.
    virtual std::vector<std::filesystem::path> take_kept() { return {}; }
    // Whether a receipt that print() returned true for is still on its way to a slow printer.
    virtual bool is_printing() const { return false; }
    // Returns true if receipts go to a port, as text or as pictures; they are then always printed.
    virtual bool prints_text() const = 0;
    // The bytes that open the drawer at a port.
    virtual std::string drawer_command(std::string_view) const { return std::string(common::drawer_bell); }
};

}  // namespace printing
