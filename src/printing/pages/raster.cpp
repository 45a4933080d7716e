#include "printing/pages/raster.h"

#include <algorithm>
#include <cmath>

#include "common/ports.h"
#include "printing/pages/canvas.h"

namespace printing::pages {

namespace {

constexpr double dots_per_mm = 8;
constexpr int lightest_burned = 160;      // of greys 0 to 255; at the middle, thin strokes would break
constexpr int stripe = 24;                // the height of a bit image
constexpr int largest_band = 4096;        // bytes, for printers with small buffers
constexpr int slice_rows = 168 * stripe;  // drawn at once, so that a long page takes little memory

constexpr std::string_view line_spacing_of_stripes = "\x1B\x33\x18";
constexpr std::string_view default_line_spacing = "\x1B\x32";
constexpr std::string_view feed_and_cut = "\x1B\x64\x03\x1D\x56\x42";  // and a zero

// Two bytes, the lower one first.
std::string two_bytes(int number) {
    return {static_cast<char>(number & 0xFF), static_cast<char>(number >> 8)};
}

// Rows of the page from `top` on, within what the print head reaches.
QImage slice_of(const PageSet& pages, int page, const RollWidth& roll, int top, int rows) {
    QImage slice(static_cast<int>(std::lround(roll.printed * dots_per_mm)), rows, print_head_format);
    slice.fill(Qt::white);
    QPainter painter(&slice);
    painter.translate(-(roll.paper - roll.printed) / 2 * dots_per_mm, -top);
    pages.draw(painter, dots_per_mm, page);
    return slice;
}

bool is_burned(const QImage& slice, int x, int y) {
    return x < slice.width() && y < slice.height() && slice.constScanLine(y)[x] <= lightest_burned;
}

// `GS v 0`: eight dots of a row in a byte, the left one highest.
std::string raster_band(const QImage& slice, int top, int rows) {
    const int row_bytes = (slice.width() + 7) / 8;
    std::string bytes = "\x1D\x76\x30" + std::string(1, '\0') + two_bytes(row_bytes) + two_bytes(rows);
    for (int y = top; y < top + rows; ++y) {
        for (int x = 0; x < row_bytes * 8; x += 8) {
            int dots = 0;
            for (int bit = 0; bit < 8; ++bit)
                dots = dots << 1 | static_cast<int>(is_burned(slice, x + bit, y));
            bytes += static_cast<char>(dots);
        }
    }
    return bytes;
}

// `ESC *` of 24 dots: three bytes a column from the top. A blank stripe is a line feed alone.
std::string bit_image_stripe(const QImage& slice, int top) {
    std::string columns;
    bool is_blank = true;
    for (int x = 0; x < slice.width(); ++x) {
        for (int y = top; y < top + stripe; y += 8) {
            int dots = 0;
            for (int bit = 0; bit < 8; ++bit)
                dots = dots << 1 | static_cast<int>(is_burned(slice, x, y + bit));
            is_blank = is_blank && dots == 0;
            columns += static_cast<char>(dots);
        }
    }
    if (is_blank) return "\n";
    return "\x1B*\x21" + two_bytes(slice.width()) + columns + "\n";
}

}  // namespace

std::string raster(const PageSet& pages, const RollWidth& roll, ReceiptPicture command, int page) {
    const bool in_stripes = command == ReceiptPicture::bit_image;
    std::string bytes(common::printer_reset);
    if (in_stripes) bytes += line_spacing_of_stripes;
    const int rows = static_cast<int>(std::ceil(pages.size().height() * dots_per_mm));
    for (int top = 0; top < rows; top += slice_rows) {
        const QImage slice = slice_of(pages, page, roll, top, std::min(slice_rows, rows - top));
        const int band = in_stripes ? stripe : largest_band / ((slice.width() + 7) / 8) / stripe * stripe;
        for (int y = 0; y < slice.height(); y += band) {
            bytes += in_stripes ? bit_image_stripe(slice, y)
                                : raster_band(slice, y, std::min(band, slice.height() - y));
        }
    }
    if (in_stripes) bytes += default_line_spacing;
    return bytes += std::string(feed_and_cut) + '\0';
}

}  // namespace printing::pages
