#include "printing/pages/raster.h"

#include <QFontDatabase>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>
#include <algorithm>
#include <optional>

#include "printing/code_128.h"
#include "printing/pages/label_page.h"
#include "printing/pages/receipt_page.h"
#include "sample.h"
#include "support/shop.h"
#include "tools.h"

namespace {

namespace fs = std::filesystem;
using namespace printing::pages;
using printing::Form;
using printing::ReceiptPicture;

// A roll printer that knows only the picture commands: what it burns, and any other bytes it gets.
class RollPrinter {
  public:
    explicit RollPrinter(int dots) : paper_(dots, 20000, QImage::Format_Grayscale8) {
        paper_.fill(Qt::white);
    }

    void print(const std::string& bytes) {
        bytes_ = bytes;
        for (at_ = 0; at_ < bytes_.size();) {
            const int byte = next();
            if (byte == '\n') {
                row_ += spacing_;
            } else if (byte == 0x1B) {
                escape(next());
            } else if (byte == 0x1D) {
                group(next());
            } else {
                FAIL() << "byte " << byte << " at " << at_ << " would print as a letter";
            }
        }
    }

    QImage picture() const { return paper_.copy(0, 0, paper_.width(), row_); }
    int largest_band() const { return largest_band_; }
    bool was_cut() const { return was_cut_; }

  private:
    int next() { return at_ < bytes_.size() ? static_cast<unsigned char>(bytes_[at_++]) : -1; }
    int next_two() {
        const int low = next();
        return low + 256 * next();
    }
    void burn(int x, int y) { paper_.scanLine(y)[x] = 0; }

    void escape(int command) {
        switch (command) {
            case '@':
                spacing_ = 30;
                break;
            case '2':
                spacing_ = 30;
                break;
            case '3':
                spacing_ = next();
                break;
            case 'd':
                next();
                break;
            case '*': {
                ASSERT_EQ(next(), 33);
                const int columns = next_two();
                ASSERT_EQ(columns, paper_.width());
                for (int x = 0; x < columns; ++x) {
                    for (int part = 0; part < 3; ++part) {
                        const int dots = next();
                        for (int bit = 0; bit < 8; ++bit)
                            if ((dots >> (7 - bit) & 1) != 0) burn(x, row_ + 8 * part + bit);
                    }
                }
                break;
            }
            default:
                FAIL() << "ESC " << command;
        }
    }

    void group(int command) {
        if (command == 'V') {
            ASSERT_EQ(next(), 66);
            ASSERT_EQ(next(), 0);
            was_cut_ = true;
            return;
        }
        ASSERT_EQ(command, 'v');
        ASSERT_EQ(next(), '0');
        ASSERT_EQ(next(), 0);
        const int row_bytes = next_two();
        const int rows = next_two();
        ASSERT_EQ(row_bytes * 8, paper_.width());
        largest_band_ = std::max({largest_band_, row_bytes * rows, rows > 255 ? 1 << 20 : 0});
        for (int y = 0; y < rows; ++y, ++row_) {
            for (int x = 0; x < row_bytes; ++x) {
                const int dots = next();
                for (int bit = 0; bit < 8; ++bit)
                    if ((dots >> (7 - bit) & 1) != 0) burn(8 * x + bit, row_);
            }
        }
    }

    QImage paper_;
    std::string bytes_;
    std::size_t at_ = 0;
    int row_ = 0;
    int spacing_ = 30;
    int largest_band_ = 0;
    bool was_cut_ = false;
};

printing::LayoutReceipt sample_layout(int width) {
    printing::Receipt receipt = test::sale();
    receipt.code = "-1108485729271284";
    auto layout = printing::layout_receipt(receipt, Form::full, width, {},
                                           printing::layout_rows(receipt, Form::full, {}));
    layout.qr = printing::qr_code("https://inv.example/متجر-77/" + std::string(150, '7'));
    return layout;
}

// Dark dots of one picture far from any dark dot of the other.
int astray(const QImage& one, const QImage& other) {
    int count = 0;
    for (int y = 1; y + 1 < one.height(); ++y) {
        for (int x = 1; x + 1 < one.width(); ++x) {
            if (qGray(one.pixel(x, y)) > 60) continue;
            bool is_near = false;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    is_near = is_near || qGray(other.pixel(x + dx, y + dy)) <= 200;
            count += is_near ? 0 : 1;
        }
    }
    return count;
}

TEST(Raster, BurnsThePageDotByDot) {
    NEEDS_TOOL("zbarimg");
    const test::TemporaryFolder folder;
    for (const int width : {48, 40}) {
        const printing::RollWidth& roll = printing::roll_of(width);
        const auto layout = sample_layout(width);
        const ReceiptPage page(layout);
        const QImage drawn = pictures(page, 8)[0];
        const int dots = width == 48 ? 576 : 384;
        for (const auto command : {ReceiptPicture::raster, ReceiptPicture::bit_image}) {
            RollPrinter printer(dots);
            printer.print(raster(page, roll, command));
            EXPECT_TRUE(printer.was_cut());
            EXPECT_LE(printer.largest_band(), 4096);
            const QImage burned = printer.picture();
            const QImage reached = drawn.copy((drawn.width() - dots) / 2, 0, dots, drawn.height());
            EXPECT_NEAR(burned.height(), reached.height(), 24);
            const QImage whole = burned.copy(0, 0, dots, reached.height());
            EXPECT_EQ(astray(whole, reached), 0) << "burned, but not on the page";
            EXPECT_EQ(astray(reached, whole), 0) << "on the page, but not burned";
            // On paper there is a margin beside what the head reaches.
            QImage paper(dots + 80, reached.height(), QImage::Format_RGB32);
            paper.fill(Qt::white);
            QPainter(&paper).drawImage(40, 0, burned);
            const fs::path file = folder.path() / "paper.png";
            ASSERT_TRUE(paper.save(QString::fromStdString(file.string())));
            const std::string codes = test::output_of("zbarimg --raw -q '" + file.string() + "'");
            EXPECT_NE(codes.find("https://inv.example/متجر-77/777"), std::string::npos) << codes;
            EXPECT_NE(codes.find("-1108485729271284\n"), std::string::npos) << codes;
        }
    }
}

// Each label of a roll of receipts is a page of its own, as wide as the print head.
TEST(Raster, PrintsLabels) {
    NEEDS_TOOL("zbarimg");
    const test::TemporaryFolder folder;
    for (const printing::LabelPaper& paper : printing::label_papers()) {
        if (!paper.is_of_receipts) continue;
        const printing::pages::LabelPages labels({paper,
                                                  0,
                                                  {{"بقالة", "شاي", "", "10.00", "6229413700121"},
                                                   {"بقالة", "سكر", "", "31.00", "6229413700213"}}});
        const printing::RollWidth& roll = printing::roll_of(paper.page_width == 58 ? 40 : 48);
        RollPrinter printer(static_cast<int>(roll.printed * 8));
        printer.print(raster(labels, roll, ReceiptPicture::raster, 1));
        EXPECT_TRUE(printer.was_cut());
        const fs::path file = folder.path() / "label.png";
        ASSERT_TRUE(printer.picture().save(QString::fromStdString(file.string())));
        EXPECT_EQ(test::output_of("zbarimg --raw -q '" + file.string() + "'"), "6229413700213\n")
            << paper.name;
    }
}

// A logo from black to white over its width becomes dots of that density; the QR code stays as it is.
TEST(Raster, DithersTheGreysOfALogo) {
    const test::TemporaryFolder folder;
    QImage ramp(432, 144, QImage::Format_Grayscale8);
    for (int y = 0; y < ramp.height(); ++y)
        for (int x = 0; x < ramp.width(); ++x)
            ramp.scanLine(y)[x] = static_cast<uchar>(x * 255 / ramp.width());
    const fs::path file = folder.path() / "logo.png";
    ASSERT_TRUE(ramp.save(QString::fromStdString(file.string())));
    auto layout = sample_layout(48);
    layout.qr = printing::qr_code("https://inv.example/7");
    const auto printed = [&layout](ReceiptPicture command) {
        RollPrinter printer(576);
        printer.print(raster(ReceiptPage(layout), printing::wide_roll, command));
        return printer.picture();
    };
    const QImage without = printed(ReceiptPicture::raster);
    layout.logo = file;
    for (const auto command : {ReceiptPicture::raster, ReceiptPicture::bit_image}) {
        const QImage paper = printed(command);
        // 18 mm high and 54 mm wide, from 3 mm on, in the middle of 576 dots.
        int dark[6] = {};
        for (int y = 24; y < 24 + 144; ++y)
            for (int x = 0; x < 432; ++x)
                dark[x / 72] += qGray(paper.pixel(72 + x, y)) < 128 ? 1 : 0;
        EXPECT_EQ(dark[0], 72 * 144);
        EXPECT_LT(dark[5], 20);
        for (int part = 1; part < 6; ++part)
            EXPECT_LT(dark[part], dark[part - 1]) << part;
        EXPECT_NEAR(dark[2] + dark[3], 72 * 144, 500) << "half of the dots around the middle grey";
        const int pushed = 144 + 12;  // the logo and 1.5 mm below it
        EXPECT_EQ(paper.copy(0, pushed + 600, 576, without.height() - 700),
                  without.copy(0, 600, 576, without.height() - 700));
    }
}

// The font's glyph of an Arabic letter in each of its forms: isolated, final, initial, medial. The letters of
// this font have codes of their own for them.
struct Letter {
    char32_t code;
    char32_t isolated;
    bool joins_next;
};
constexpr Letter alphabet[] = {{U'ا', 0xFE8D, false}, {U'ب', 0xFE8F, true}, {U'ة', 0xFE93, false},
                               {U'ر', 0xFEAD, false}, {U'س', 0xFEB1, true}, {U'ق', 0xFED5, true},
                               {U'ل', 0xFEDD, true},  {U'م', 0xFEE1, true}, {U'ﻻ', 0xFEFB, false}};

// Glyphs from the right to the left, by the rules of the script. `ﻻ` stands for lam and alef.
std::u32string glyphs_of(std::u32string_view text, bool joined) {
    std::u32string glyphs;
    bool joins_former = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto* letter = std::ranges::find(alphabet, text[at], &Letter::code);
        if (letter == std::end(alphabet)) {
            glyphs += text[at];
            joins_former = false;
            continue;
        }
        const bool joins_next = letter->joins_next && at + 1 < text.size() && text[at + 1] != U' ';
        const int form = !joined ? 0 : (joins_former ? 1 : 0) + (joins_next ? 2 : 0);
        glyphs += letter->isolated + static_cast<char32_t>(form);
        joins_former = joins_next;
    }
    return glyphs;
}

// Burns glyphs one by one, the first at the right or at the left: no layout, no shaping.
QImage burned_glyphs(const std::u32string& glyphs, const QFont& font, double pixels, bool from_right) {
    QRawFont raw = QRawFont::fromFont(font);
    raw.setPixelSize(pixels);
    const auto numbers =
        raw.glyphIndexesForString(QString::fromUcs4(glyphs.data(), static_cast<qsizetype>(glyphs.size())));
    const auto advances = raw.advancesForGlyphIndexes(numbers);
    QImage drawn(576, 100, QImage::Format_Grayscale8);
    drawn.fill(Qt::white);
    QPainter painter(&drawn);
    painter.setRenderHint(QPainter::Antialiasing);
    double x = from_right ? 500 : 20;
    for (qsizetype at = 0; at < numbers.size(); ++at) {
        if (from_right) x -= advances[at].x();
        painter.fillPath(raw.pathForGlyph(numbers[at]).translated(x, 60), Qt::black);
        if (!from_right) x += advances[at].x();
    }
    return drawn;
}

// What is dark in a picture's first stretch of rows, of those with up to five blank rows between them.
QRect first_ink(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height() && (ink.isNull() || y <= ink.bottom() + 6); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) <= 160) ink |= QRect(x, y, 1, 1);
    return ink;
}

// The share of dots in which two pictures differ at the best small displacement.
double difference(const QImage& one, const QImage& other) {
    const QRect first = first_ink(one).adjusted(-4, -4, 4, 4);
    const QRect second = first_ink(other);
    double least = 1;
    for (int dx = -2; dx <= 2; ++dx) {
        for (int dy = -2; dy <= 2; ++dy) {
            const QImage a = one.copy(first);
            const QImage b =
                other.copy(QRect(second.left() - 4 + dx, second.top() - 4 + dy, a.width(), a.height()));
            int dark = 0;
            for (int y = 0; y < a.height(); ++y)
                for (int x = 0; x < a.width(); ++x)
                    dark += qGray(a.pixel(x, y)) <= 60 ? 1 : 0;
            least = std::min(least, static_cast<double>(astray(a, b) + astray(b, a)) / dark);
        }
    }
    return least;
}

TEST(Raster, JoinsArabicAsTheFontsOwnFormsDo) {
    QFont font("DejaVu Sans");
    if (!QFontDatabase::hasFamily(font.family())) GTEST_SKIP() << "no font with codes for the forms";
    printing::Receipt receipt = test::sale();
    receipt.store_name.clear();
    receipt.second_store_name = "بقالة السلام رقم";
    printing::ReceiptSettings settings;
    settings.font = "DejaVu Sans";
    settings.font_size = 10;
    const auto layout = printing::layout_receipt(receipt, Form::full, 48, settings,
                                                 printing::layout_rows(receipt, Form::full, settings));
    RollPrinter printer(576);
    printer.print(raster(ReceiptPage(layout), printing::wide_roll, ReceiptPicture::raster));
    const QImage paper = printer.picture();
    // Letters of 14 points, in twentieths of a millimetre and then in dots.
    const double pixels = std::lround(14 * 25.4 / 72 * 20) / 20.0 * 8;
    const std::u32string text = U"بقالة السﻻم رقم";
    EXPECT_LT(difference(paper, burned_glyphs(glyphs_of(text, true), font, pixels, true)), 0.01);
    EXPECT_GT(difference(paper, burned_glyphs(glyphs_of(text, false), font, pixels, true)), 0.1)
        << "unjoined";
    EXPECT_GT(difference(paper, burned_glyphs(glyphs_of(text, true), font, pixels, false)), 0.1)
        << "reversed";
}

TEST(Raster, TakesAPageLongerThanAPicture) {
    printing::LayoutReceipt layout = sample_layout(40);
    layout.rows.assign(600, layout.rows[0]);
    const ReceiptPage page(layout);
    const std::string bytes = raster(page, printing::narrow_roll, ReceiptPicture::raster);
    EXPECT_GE(bytes.size(), static_cast<std::size_t>(page.size().height() * 8 * 48));
}

TEST(Code128, IsReadByScannersAtEveryResolution) {
    NEEDS_TOOL("zbarimg");
    const test::TemporaryFolder folder;
    for (const int width : {48, 40}) {
        for (const int dots_per_inch : {180, 203, 300}) {
            for (const char* code : {"-1108485729271284", "-310848572927123456"}) {
                auto layout = sample_layout(width);
                layout.qr.reset();
                layout.code = code;
                const QImage drawn = pictures(ReceiptPage(layout), dots_per_inch / 25.4)[0];
                const fs::path file = folder.path() / "paper.png";
                ASSERT_TRUE(drawn.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::ThresholdDither)
                                .save(QString::fromStdString(file.string())));
                EXPECT_EQ(
                    test::output_of("zbarimg --raw -q -Sdisable -Scode128.enable '" + file.string() + "'"),
                    std::string(code) + "\n")
                    << width << " at " << dots_per_inch;
            }
        }
    }
}

// By the printer's manual: GS k 73, the number of data bytes, {B and the text, {C and pairs of digits.
TEST(Code128, IsSpelledOutForPrintersThatDrawIt) {
    const std::string command = printing::barcode_command("-11084857");
    EXPECT_EQ(command.substr(0, 15), std::string("\x1B"
                                                 "a\x01\x1Dh\x50\x1Dw\x02\x1DH\x02\x1Dk\x49"));
    EXPECT_EQ(command.substr(15, 10), std::string("\x09{B-{C\x0B\x08\x30\x39", 10));
    EXPECT_EQ(command.substr(25), std::string("\x1B"
                                              "a\0",
                                              3));
    EXPECT_EQ(printing::barcode_command("بون"), "");
    EXPECT_TRUE(printing::code_128("").empty());
}

}  // namespace
