// Text receipts on their way to the port.
#pragma once

#include "common/devices.h"
#include "printing/printer_codes.h"
#include "printing/receipt_printer.h"

namespace printing {

// Writes the text receipt to the chosen port. False when the port is missing, refuses, or does not take
// everything within the bounded time that Devices promises.
bool print_to_port(common::Devices& devices, const PrinterChoice& choice, const Receipt& receipt, Form form,
                   const PrinterCodes& codes);

}  // namespace printing
