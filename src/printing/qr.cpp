#include "printing/qr.h"

#include <qrencode.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <vector>

namespace printing {

namespace {

constexpr unsigned dots_per_module = 4;
constexpr unsigned quiet_modules = 4;

struct FreeCode {
    void operator()(QRcode* code) const { QRcode_free(code); }
};
using Code = std::unique_ptr<QRcode, FreeCode>;

void put(std::string& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
}

// Rows from the bottom up, three bytes per dot, each row padded to a multiple of four bytes.
std::string bitmap_of(const QRcode& code) {
    const auto modules = static_cast<unsigned>(code.width);
    const unsigned dots = (modules + 2 * quiet_modules) * dots_per_module;
    const std::uint32_t row_bytes = (dots * 3 + 3) / 4 * 4;
    constexpr std::uint32_t headers = 14 + 40;

    std::string bytes = "BM";
    put(bytes, headers + row_bytes * dots, 4);
    put(bytes, 0, 4);
    put(bytes, headers, 4);
    put(bytes, 40, 4);  // size of the picture's header
    put(bytes, dots, 4);
    put(bytes, dots, 4);
    put(bytes, 1, 2);   // planes
    put(bytes, 24, 2);  // bits per dot
    put(bytes, 0, 4);   // not compressed
    put(bytes, row_bytes * dots, 4);
    for (int i = 0; i < 4; ++i)
        put(bytes, 0, 4);  // resolution and colours not given

    const auto is_dark = [&](unsigned x, unsigned y) {
        const unsigned column = x / dots_per_module;
        const unsigned row = y / dots_per_module;
        if (column < quiet_modules || row < quiet_modules) return false;
        if (column >= quiet_modules + modules || row >= quiet_modules + modules) return false;
        return (code.data[(row - quiet_modules) * modules + column - quiet_modules] & 1) != 0;
    };
    for (unsigned y = dots; y-- > 0;) {
        for (unsigned x = 0; x < dots; ++x)
            bytes.append(3, is_dark(x, y) ? '\0' : '\xFF');
        bytes.append(row_bytes - dots * 3, '\0');
    }
    return bytes;
}

}  // namespace

std::optional<ElectronicInvoicing> read_electronic_invoicing(database::Connection& connection) {
    const auto rows = connection.query("select * from elec_inv");
    if (rows.empty()) return std::nullopt;
    const auto& row = rows.front();
    ElectronicInvoicing shop{row.text("url"), row.text("clintid"), row.text("pos")};
    if (shop.url.empty()) return std::nullopt;
    return shop;
}

std::string qr_text(const ElectronicInvoicing& shop, const Receipt& receipt) {
    char moment[32];
    std::snprintf(moment, sizeof moment, "%04d%02d%02d/%02d%02d", receipt.date.year, receipt.date.month,
                  receipt.date.day, receipt.time.hour, receipt.time.minute);
    return shop.url + "/" + shop.client + "/" + shop.pos + "/" + moment + "/" +
           std::to_string(receipt.number);
}

bool print_qr(std::string_view text, const std::filesystem::path& path) {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    if (text.empty()) return false;
    // Medium error correction if it fits; the longest texts get the lowest.
    for (const QRecLevel level : {QR_ECLEVEL_M, QR_ECLEVEL_L}) {
        const Code code(QRcode_encodeData(static_cast<int>(text.size()),
                                          reinterpret_cast<const unsigned char*>(text.data()), 0, level));
        if (!code) continue;
        std::ofstream file(path, std::ios::binary);
        file << bitmap_of(*code);
        file.close();
        if (file) return true;
        std::filesystem::remove(path, ignored);
        return false;
    }
    return false;
}

}  // namespace printing
