#include "printing/pages/canvas.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "common/wording.h"

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
constexpr double unbounded = 100000;
constexpr double smallest_letters = 0.4;  // of a text whose words would break

QRectF scaled(const QRectF& area) {
    return {area.x() * units, area.y() * units, area.width() * units, area.height() * units};
}

bool is_print_head(const QPaintDevice& device) {
    return device.devType() == QInternal::Image &&
           static_cast<const QImage&>(device).format() == print_head_format;
}

// Dots of a picture in a size. What is almost black or white has no pattern, so that the edges of lines stay
// sharp.
QImage dots_of(const QImage& image, const QSize& size) {
    QImage greys(size, QImage::Format_RGB32);
    greys.fill(Qt::white);
    QPainter painter(&greys);
    painter.drawImage(0, 0, image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    painter.end();
    greys.convertTo(QImage::Format_Grayscale8);
    constexpr int black = 40;
    constexpr int white = 215;
    for (int y = 0; y < greys.height(); ++y) {
        uchar* row = greys.scanLine(y);
        for (int x = 0; x < greys.width(); ++x)
            row[x] = static_cast<uchar>(std::clamp((row[x] - black) * 255 / (white - black), 0, 255));
    }
    return greys.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::DiffuseDither);
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

Canvas::Laid Canvas::lay_out(double x, double y, double width, const QString& text, const TextStyle& style,
                             Draw draw) const {
    QString flowing = text.contains('-') ? qstring(common::with_minus_at_left(text.toStdString())) : text;
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
    double widest = 0;
    double height = 0;
    bool breaks_words = false;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width * units);
        line.setPosition({0, height + baseline * letter_size - line.ascent()});
        height += line_pitch * letter_size;
        widest = std::max(widest, line.naturalTextWidth());
        const int end = line.textStart() + line.textLength();
        breaks_words = breaks_words || (end < flowing.size() && !flowing[end - 1].isSpace());
    }
    layout.endLayout();
    if (painter_ != nullptr && (draw == Draw::always || (draw == Draw::whole_words && !breaks_words))) {
        painter_->setPen(style.colour);
        layout.draw(painter_, {x * units, y * units});
    }
    return {widest / units, height / units, breaks_words};
}

double Canvas::lay_out_whole_words(double x, double y, double width, const QString& text,
                                   const TextStyle& style, bool draw) const {
    if (text.isEmpty()) return 0;
    const Laid laid = lay_out(x, y, width, text, style, draw ? Draw::whole_words : Draw::never);
    if (!laid.breaks_words) return laid.height;
    double longest = 0;
    for (const QString& word : text.split(QRegularExpression("\\s+"), Qt::SkipEmptyParts))
        longest = std::max(longest, text_width(word, style));
    TextStyle fitting = style;
    // A code without blanks may be longer than any paper; it is broken.
    if (longest * smallest_letters <= width) fitting.points *= std::min(1.0, width / longest * 0.98);
    return lay_out(x, y, width, text, fitting, draw ? Draw::always : Draw::never).height;
}

double Canvas::text(double x, double y, double width, const QString& text, const TextStyle& style) const {
    return lay_out_whole_words(x, y, width, text, style, true);
}

double Canvas::line(double x, double y, double width, const QString& text, const TextStyle& style) const {
    const double wanted = text_width(text, style);
    if (wanted <= width) return this->text(x, y, width, text, style);
    TextStyle fitting = style;
    fitting.points *= std::max(0.25, width / wanted * 0.98);
    // Letters are whole numbers of units high, so they may come out a little wider.
    while (fitting.points > 1 && text_width(text, fitting) > width)
        fitting.points *= 0.97;
    const double baseline_shift = baseline * (style.points - fitting.points) * mm_per_point;
    return baseline_shift + this->text(x, y + baseline_shift, width, text, fitting);
}

double Canvas::text_height(double width, const QString& text, const TextStyle& style) const {
    if (text.isEmpty()) return 0;
    // Measuring is faster than laying out, and in a long table most texts fit on one line with room to spare.
    const QFont letters = font(style);
    const bool fits = QFontMetricsF(letters).horizontalAdvance(text) * 1.05 < width * units;
    if (fits && !text.contains('\n')) return line_pitch * letters.pixelSize() / units;
    return lay_out_whole_words(0, 0, width, text, style, false);
}

double Canvas::text_width(const QString& text, const TextStyle& style) const {
    if (!reads_from_right(text)) return QFontMetricsF(font(style)).horizontalAdvance(text) / units;
    // The layout includes how far Arabic letters reach beyond their advance. The font's own sum does not, so
    // a text would break in a column of that width.
    return lay_out(0, 0, unbounded, text, style, Draw::never).width;
}

void Canvas::rule(double left, double right, double y, double thickness, const QColor& colour) const {
    const QRectF area(left, y - thickness / 2, right - left, thickness);
    if (painter_ == nullptr || !is_print_head(*painter_->device())) {
        fill(area, colour);
        return;
    }
    // Align to whole dots: a thin rule between two rows of dots would burn neither.
    const QRectF device = painter_->combinedTransform().mapRect(scaled(area));
    painter_->save();
    painter_->resetTransform();
    painter_->fillRect(QRectF(device.left(), std::round(device.top()), device.width(),
                              std::max(1.0, std::round(device.height()))),
                       Qt::black);
    painter_->restore();
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
    if (painter_ == nullptr || image.isNull()) return;
    if (!is_print_head(*painter_->device())) {
        painter_->drawImage(scaled(area), image);
        return;
    }
    const QRect device = painter_->combinedTransform().mapRect(scaled(area)).toRect();
    painter_->save();
    painter_->resetTransform();
    painter_->drawImage(device.topLeft(), dots_of(image, device.size()));
    painter_->restore();
}

void Canvas::modules(const QRectF& area, int columns, int rows,
                     const std::function<bool(int column, int row)>& is_dark) const {
    if (painter_ == nullptr) return;
    const QRectF device = painter_->combinedTransform().mapRect(scaled(area));
    double width = device.width() / columns;
    if (rows > 1) width = std::min(width, device.height() / rows);
    if (width >= 1) width = std::floor(width + 1e-6);  // smaller ones are seen on screens only
    const double height = rows > 1 ? width : std::round(device.height());
    const double left = std::round(device.center().x() - width * columns / 2);
    const double top = std::round(device.center().y() - height * rows / 2);
    QPainterPath path;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const int begin = column;
            while (column < columns && is_dark(column, row))
                ++column;
            if (column > begin)
                path.addRect(left + begin * width, top + row * height, (column - begin) * width, height);
        }
    }
    painter_->save();
    painter_->resetTransform();
    painter_->setRenderHint(QPainter::Antialiasing, false);
    painter_->fillPath(path, Qt::black);
    painter_->restore();
}

}  // namespace printing::pages
