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

struct FreeCode {
    void operator()(::QRcode* code) const { QRcode_free(code); }
};
using Code = std::unique_ptr<::QRcode, FreeCode>;

void put(std::string& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
}

// Rows from the bottom up, three bytes per dot, each row padded to a multiple of four bytes.
std::string bitmap_of(const QrCode& code) {
    const unsigned dots = (static_cast<unsigned>(code.modules) + 2 * QrCode::quiet_modules) * dots_per_module;
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

    const auto module_at = [](unsigned dot) {
        return static_cast<int>(dot / dots_per_module) - QrCode::quiet_modules;
    };
    for (unsigned y = dots; y-- > 0;) {
        for (unsigned x = 0; x < dots; ++x)
            bytes.append(3, code.is_dark(module_at(x), module_at(y)) ? '\0' : '\xFF');
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

std::optional<QrCode> qr_code(std::string_view text) {
    if (text.empty()) return std::nullopt;
    // Medium error correction if it fits; the longest texts get the lowest.
    for (const QRecLevel level : {QR_ECLEVEL_M, QR_ECLEVEL_L}) {
        const Code made(QRcode_encodeData(static_cast<int>(text.size()),
                                          reinterpret_cast<const unsigned char*>(text.data()), 0, level));
        if (!made) continue;
        QrCode code{made->width, {}};
        const auto squares = static_cast<std::size_t>(made->width) * static_cast<std::size_t>(made->width);
        for (std::size_t i = 0; i < squares; ++i)
            code.dark.push_back((made->data[i] & 1) != 0);
        return code;
    }
    return std::nullopt;
}

bool print_qr(std::string_view text, const std::filesystem::path& path) {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    const std::optional<QrCode> code = qr_code(text);
    if (!code) return false;
    std::ofstream file(path, std::ios::binary);
    file << bitmap_of(*code);
    file.close();
    if (file) return true;
    std::filesystem::remove(path, ignored);
    return false;
}

}  // namespace printing
