// The QR code of electronic invoicing.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

// The squares of a code, without the quiet zone around them.
struct QrCode {
    // The light modules that a code needs on each side.
    static constexpr int quiet_modules = 4;
    int modules = 0;  // on each side
    std::vector<bool> dark;
    bool is_dark(int x, int y) const {
        return x >= 0 && y >= 0 && x < modules && y < modules &&
               dark[static_cast<std::size_t>(y) * static_cast<std::size_t>(modules) +
                    static_cast<std::size_t>(x)];
    }
};

// The text's code; nothing if the text is empty or too long.
std::optional<QrCode> qr_code(std::string_view text);

// Writes the text's QR code to a picture file (24-bit BMP, 4 dots per module, with its quiet zone). Returns
// false, and leaves no file, if the text is empty or too long for a code, or the file cannot be written.
bool print_qr(std::string_view text, const std::filesystem::path& path);

}  // namespace printing
