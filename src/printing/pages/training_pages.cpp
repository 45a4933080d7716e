#include "printing/pages/training_pages.h"

#include <QPainterPath>
#include <algorithm>

#include "signin/session.h"

namespace printing::pages {

namespace {

constexpr double letters = 100;  // of the path, before it is scaled
constexpr double slope = -25;    // degrees
constexpr double outline = 0.5;  // mm
constexpr double share = 0.62;   // of the page's width

QPainterPath word() {
    QFont font({"Noto Sans Arabic", "DejaVu Sans"});
    font.setPixelSize(static_cast<int>(letters));
    font.setBold(true);
    QPainterPath path;
    path.addText(0, 0, font, QString::fromUtf8(signin::training_word));
    path.translate(-path.boundingRect().center());
    return path;
}

}  // namespace

// Draws an outline, so that the page stays readable below it. On a long page the word is repeated.
void TrainingPages::draw(QPainter& painter, double dots_per_mm, int page) const {
    pages_->draw(painter, dots_per_mm, page);
    static const QPainterPath path = word();
    const double scale = size().width() * share / path.boundingRect().width();
    const double apart = size().width();
    const int times = std::max(1, static_cast<int>(size().height() / apart));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(dots_per_mm, dots_per_mm);
    for (int at = 0; at < times; ++at) {
        painter.save();
        painter.translate(size().width() / 2, size().height() * (at + 0.5) / times);
        painter.rotate(slope);
        painter.scale(scale, scale);
        painter.strokePath(path, QPen(QColor(90, 90, 90), outline / scale));
        painter.restore();
    }
    painter.restore();
}

}  // namespace printing::pages
