#include "printing/pages/paper_picture.h"

#include <QFont>
#include <QPainter>
#include <array>

#include "printing/text_receipt.h"

namespace printing::pages {

namespace {

// The upper half of code page 864, where the soft hyphen and the hard blank print as blanks.
constexpr std::array<char32_t, 128> upper_half = {
    0x00B0, 0x00B7, 0x2219, 0x221A, 0x2592, 0x2500, 0x2502, 0x253C, 0x2524, 0x252C, 0x251C, 0x2534, 0x2510,
    0x250C, 0x2514, 0x2518, 0x03B2, 0x221E, 0x03C6, 0x00B1, 0x00BD, 0x00BC, 0x2248, 0x00AB, 0x00BB, 0xFEF7,
    0xFEF8, 0x0020, 0x0020, 0xFEFB, 0xFEFC, 0x0020, 0x0020, 0x0020, 0xFE82, 0x00A3, 0x00A4, 0xFE84, 0x0020,
    0x0020, 0xFE8E, 0xFE8F, 0xFE95, 0xFE99, 0x060C, 0xFE9D, 0xFEA1, 0xFEA5, 0x0660, 0x0661, 0x0662, 0x0663,
    0x0664, 0x0665, 0x0666, 0x0667, 0x0668, 0x0669, 0xFED1, 0x061B, 0xFEB1, 0xFEB5, 0xFEB9, 0x061F, 0x00A2,
    0xFE80, 0xFE81, 0xFE83, 0xFE85, 0xFECA, 0xFE8B, 0xFE8D, 0xFE91, 0xFE93, 0xFE97, 0xFE9B, 0xFE9F, 0xFEA3,
    0xFEA7, 0xFEA9, 0xFEAB, 0xFEAD, 0xFEAF, 0xFEB3, 0xFEB7, 0xFEBB, 0xFEBF, 0xFEC1, 0xFEC5, 0xFECB, 0xFECF,
    0x00A6, 0x00AC, 0x00F7, 0x00D7, 0xFEC9, 0x0640, 0xFED3, 0xFED7, 0xFEDB, 0xFEDF, 0xFEE3, 0xFEE7, 0xFEEB,
    0xFEED, 0xFEEF, 0xFEF3, 0xFEBD, 0xFECC, 0xFECE, 0xFECD, 0xFEE1, 0xFE7D, 0x0651, 0xFEE5, 0xFEE9, 0xFEEC,
    0xFEF0, 0xFEF2, 0xFED0, 0xFED5, 0xFEF5, 0xFEF6, 0xFEDD, 0xFED9, 0xFEF1, 0x25A0, 0x0020,
};

char32_t letter_of_864(unsigned char byte) {
    if (byte >= 0x80) return upper_half[byte - 0x80u];
    return byte >= ' ' && byte != 0x7F ? byte : U' ';
}

constexpr unsigned char escape = 0x1B;
constexpr unsigned char group = 0x1D;
constexpr unsigned char wide_on = 0x0E;   // alone, or after an escape
constexpr unsigned char wide_off = 0x14;  // likewise

// Follows the print head over the paper.
class PrintedPaper {
  public:
    PrintedPaper(std::string_view bytes, int width) : bytes_(bytes), width_(width) {}

    std::vector<PaperLine> lines() {
        while (at_ < bytes_.size())
            take(next());
        if (lines_.back().empty()) lines_.pop_back();
        return lines_;
    }

  private:
    unsigned char next() { return at_ < bytes_.size() ? static_cast<unsigned char>(bytes_[at_++]) : 0; }

    void take(unsigned char byte) {
        if (byte == escape)
            command(next());
        else if (byte == group)
            barcode_command(next());
        else if (byte == '\n')
            feed(1);
        else if (byte == wide_on || byte == wide_off)
            wide_ = byte == wide_on;
        else if (byte >= ' ')
            put(letter_of_864(byte));
    }

    void command(unsigned char name) {
        switch (name) {
            case '@':
                wide_ = false;
                break;
            case 'T':  // a code page of four digits
                at_ += 4;
                break;
            case 'a':  // alignment
                next();
                break;
            case 'd':  // prints and feeds lines
                feed(next());
                break;
            case wide_on:
            case wide_off:
                wide_ = name == wide_on;
                break;
            default:
                break;
        }
    }

    // A barcode shows as a row of bars, whatever it says.
    void barcode_command(unsigned char name) {
        next();
        if (name != 'k') return;
        at_ += next();
        feed(1);
        for (int column = width_ / 4; column < width_ * 3 / 4; ++column)
            lines_.back().push_back({U'\u2551', false});
        lines_.back().insert(lines_.back().begin(), static_cast<std::size_t>(width_ / 4), {});
        feed(1);
    }

    void feed(int lines) {
        lines_.resize(lines_.size() + static_cast<std::size_t>(lines));
        column_ = 0;
    }

    void put(char32_t letter) {
        const int columns = wide_ ? 2 : 1;
        if (column_ + columns > width_) feed(1);
        lines_.back().push_back({letter, wide_});
        column_ += columns;
    }

    std::string_view bytes_;
    int width_;
    std::size_t at_ = 0;
    std::vector<PaperLine> lines_{1};
    int column_ = 0;
    bool wide_ = false;
};

constexpr int cell_width = 12;  // dots of a printer's own character
constexpr int cell_height = 24;
constexpr int line_height = 30;
constexpr int margin = 24;
constexpr int letter_size = 20;
constexpr std::size_t most_lines = 1000;  // QPainter cannot draw on a longer picture
const QColor paper_colour(0xFD, 0xFC, 0xF7);
const QColor print_colour(0x1C, 0x1C, 0x1E);

void draw_character(QPainter& painter, const PaperCharacter& character, int x, int y) {
    painter.save();
    painter.translate(x, y);
    if (character.wide) painter.scale(2, 1);
    const QString text = QString::fromUcs4(&character.letter, 1);
    painter.drawText(QRect(0, 0, cell_width, cell_height), Qt::AlignCenter | Qt::TextDontClip, text);
    painter.restore();
}

}  // namespace

std::vector<PaperLine> paper_lines(std::string_view bytes, int width) {
    return PrintedPaper(bytes, width).lines();
}

QImage paper_picture(std::string_view bytes, int width) {
    const int columns = width > 0 ? width : width_of(bytes);
    std::vector<PaperLine> lines = paper_lines(bytes, columns);
    if (lines.size() > most_lines) lines.resize(most_lines);
    QImage image(columns * cell_width + 2 * margin, static_cast<int>(lines.size()) * line_height + 2 * margin,
                 QImage::Format_RGB32);
    image.fill(paper_colour);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    QFont font;
    font.setFamilies({"DejaVu Sans Mono", "Noto Sans Arabic"});
    font.setPixelSize(letter_size);
    painter.setFont(font);
    painter.setPen(print_colour);
    int y = margin;
    for (const PaperLine& line : lines) {
        int x = margin;
        for (const PaperCharacter& character : line) {
            draw_character(painter, character, x, y);
            x += cell_width * (character.wide ? 2 : 1);
        }
        y += line_height;
    }
    return image;
}

}  // namespace printing::pages
