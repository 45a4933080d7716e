// The QR code of electronic invoicing.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "database/connection.h"
#include "printing/receipt.h"

namespace printing {

// The row of `elec_inv`; nulls are empty texts.
struct ElectronicInvoicing {
    std::string url;
    std::string client;  // clintid
    std::string pos;
};

// Returns nothing if electronic invoicing is not configured: no row, or one without an address.
std::optional<ElectronicInvoicing> read_electronic_invoicing(database::Connection& connection);

// url/clintid/pos/yyyymmdd/HHmm/number, joined with "/" in that order.
std::string qr_text(const ElectronicInvoicing& shop, const Receipt& receipt);

// Writes the text's QR code to a picture file (24-bit BMP, 4 dots per module, with its quiet zone). Returns
// false, and leaves no file, if the text is empty or too long for a code, or the file cannot be written.
bool print_qr(std::string_view text, const std::filesystem::path& path);

}  // namespace printing
