#include "printing/pages/paper_picture.h"

#include <QFont>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

#include "printing/paper.h"
#include "printing/text_receipt.h"

namespace printing::pages {

namespace {

constexpr int cell_width = 12;  // dots of a printer's own character
constexpr int cell_height = 24;
constexpr int line_height = 30;
constexpr int margin = 24;
constexpr int letter_size = 20;
constexpr std::size_t most_lines = 1000;  // a longer picture could not be painted on
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
