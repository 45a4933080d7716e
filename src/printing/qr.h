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

// Nothing when electronic invoicing is not configured: no row, or one without an address.
std::optional<ElectronicInvoicing> read_electronic_invoicing(database::Connection& connection);

// url/clintid/pos/yyyymmdd/HHmm/number, joined with "/" in that order.
std::string qr_text(const ElectronicInvoicing& shop, const Receipt& receipt);

// Writes the text's QR code to a picture file (24-bit BMP, 4 dots a module, with its quiet zone). False when
// the text is empty or too long for a code, or the file cannot be written; then no file is left.
bool print_qr(std::string_view text, const std::filesystem::path& path);

}  // namespace printing
