#include "printing/print_to_port.h"

#include "printing/text_receipt.h"

namespace printing {

bool print_to_port(common::Devices& devices, const PrinterChoice& choice, const Receipt& receipt, Form form,
                   const PrinterCodes& codes) {
    return devices.write_port(choice.receipt_port, text_receipt(receipt, form, choice.line_width, codes));
}

}  // namespace printing
