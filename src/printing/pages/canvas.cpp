#include "printing/pages/canvas.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainterPath>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace printing::pages {

namespace {

// Texts are laid out at this resolution and scaled as a whole, so that lines break at the same words on paper
// and on the screen.
constexpr double units = 20;  // per millimetre
constexpr double mm_per_point = 25.4 / 72;
// The line height follows the letters' size, because the height that Arabic fonts ask for would make a
// receipt half as long again.
constexpr double line_pitch = 1.5;
constexpr double baseline = 1.08;

QRectF scaled(const QRectF& area) {
    return {area.x() * units, area.y() * units, area.width() * units, area.height() * units};
}

bool reads_from_right(const QString& text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.direction() == QChar::DirAL || c.direction() == QChar::DirR; });
}

}  // namespace

QStringList font_families(const QString& wanted) {
    QStringList families;
    if (!wanted.isEmpty() && QFontDatabase::hasFamily(wanted)) families << wanted;
    return families << "Noto Sans Arabic"
                    << "Noto Sans"
                    << "DejaVu Sans";
}

Canvas::Canvas(QPainter* painter, const QString& family) : painter_(painter) {
    base_.setFamilies(font_families(family));
    base_.setHintingPreference(QFont::PreferNoHinting);
}

void Canvas::prepare(QPainter& painter, double dots_per_mm) {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    painter.scale(dots_per_mm / units, dots_per_mm / units);
}

QFont Canvas::font(const TextStyle& style) const {
    QFont font = base_;
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(style.points * mm_per_point * units))));
    font.setBold(style.bold);
    return font;
}

double Canvas::lay_out(double x, double y, double width, const QString& text, const TextStyle& style,
                       bool draw) const {
    QString flowing = text;
    flowing.replace('\n', QChar::LineSeparator);
    QTextOption option;
    option.setTextDirection(reads_from_right(text) ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    const Qt::Alignment side = style.side == Side::centre ? Qt::AlignHCenter
                               : style.side == Side::left ? Qt::AlignLeft
                                                          : Qt::AlignRight;
    option.setAlignment(side | Qt::AlignAbsolute);

    QTextLayout layout(flowing, font(style));
    layout.setTextOption(option);
    layout.beginLayout();
    const double letter_size = layout.font().pixelSize();
    double height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width * units);
        line.setPosition({0, height + baseline * letter_size - line.ascent()});
        height += line_pitch * letter_size;
    }
    layout.endLayout();
    if (draw && painter_ != nullptr) {
        painter_->setPen(style.colour);
        layout.draw(painter_, {x * units, y * units});
    }
    return height / units;
}

double Canvas::text(double x, double y, double width, const QString& text, const TextStyle& style) const {
    if (text.isEmpty()) return 0;
    return lay_out(x, y, width, text, style, true);
}

double Canvas::line(double x, double y, double width, const QString& text, const TextStyle& style) const {
    const double wanted = text_width(text, style);
    if (wanted <= width) return this->text(x, y, width, text, style);
    TextStyle fitting = style;
    fitting.points *= std::max(0.25, width / wanted * 0.98);
    const double baseline_shift = baseline * (style.points - fitting.points) * mm_per_point;
    return baseline_shift + this->text(x, y + baseline_shift, width, text, fitting);
}

double Canvas::text_height(double width, const QString& text, const TextStyle& style) const {
    if (text.isEmpty()) return 0;
    // Measuring is faster than laying out, and in a long table most texts fit on one line with room to spare.
    const QFont letters = font(style);
    const bool fits = QFontMetricsF(letters).horizontalAdvance(text) * 1.02 < width * units;
    if (fits && !text.contains('\n')) return line_pitch * letters.pixelSize() / units;
    return lay_out(0, 0, width, text, style, false);
}

double Canvas::text_width(const QString& text, const TextStyle& style) const {
    return QFontMetricsF(font(style)).horizontalAdvance(text) / units;
}

void Canvas::rule(double left, double right, double y, double thickness, const QColor& colour) const {
    fill({left, y - thickness / 2, right - left, thickness}, colour);
}

void Canvas::fill(const QRectF& area, const QColor& colour, double radius) const {
    if (painter_ == nullptr) return;
    QPainterPath path;
    path.addRoundedRect(scaled(area), radius * units, radius * units);
    painter_->fillPath(path, colour);
}

void Canvas::frame(const QRectF& area, double thickness, const QColor& colour, double radius) const {
    if (painter_ == nullptr) return;
    painter_->setPen(QPen(colour, thickness * units));
    painter_->setBrush(Qt::NoBrush);
    painter_->drawRoundedRect(scaled(area), radius * units, radius * units);
}

void Canvas::picture(const QRectF& area, const QImage& image) const {
    if (painter_ != nullptr && !image.isNull()) painter_->drawImage(scaled(area), image);
}

}  // namespace printing::pages
