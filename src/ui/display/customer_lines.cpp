#include "ui/display/customer_lines.h"

#include <QPainter>
#include <algorithm>

#include "common/numbers.h"
#include "sales/invoice.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr double row_height = 64;
constexpr double name_size = 22;
constexpr double detail_size = 16;

}  // namespace

CustomerLines::CustomerLines(QWidget* parent) : QWidget(parent) {
    setObjectName("customer_lines");
    setFocusPolicy(Qt::NoFocus);
}

void CustomerLines::show_lines(const sales::Invoice& invoice) {
    lines_.clear();
    for (const sales::Line& line : invoice.lines) {
        lines_.push_back({qt(line.name),
                          "\u200f" + qt(common::format_quantity(line.quantity)) + " " + qt(line.unit_name) +
                              " × " + qt(common::format_amount(line.price)),
                          figure(line.total().text())});
    }
    // For screen readers and for plays.
    setAccessibleName(QString::number(lines_.size()));
    setAccessibleDescription(lines_.empty() ? QString() : lines_.back().name + " " + lines_.back().total);
    update();
}

void CustomerLines::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QColor(colour::line));
    painter.setBrush(QColor(colour::paper));
    painter.drawRoundedRect(rect().adjusted(0, 0, -1, -1), px(10), px(10));
    const int height_of_row = px(row_height);
    const auto fit = static_cast<std::size_t>(std::max(1, height() / height_of_row));
    const std::size_t first = lines_.size() > fit ? lines_.size() - fit : 0;
    for (std::size_t at = first; at < lines_.size(); ++at) {
        const QRect place(0, static_cast<int>(at - first) * height_of_row, width(), height_of_row);
        if (at + 1 == lines_.size())
            painter.fillRect(place.adjusted(px(2), px(2), -px(2), -px(2)), QColor(colour::current));
        draw(painter, place.adjusted(px(18), 0, -px(18), 0), lines_[at]);
    }
}

// Name above quantity and price at the right, the total at the left.
void CustomerLines::draw(QPainter& painter, const QRect& place, const Line& line) const {
    QFont strong = font();
    strong.setPixelSize(px(name_size));
    strong.setBold(true);
    QFont detail = font();
    detail.setPixelSize(px(detail_size));
    painter.setFont(strong);
    painter.setPen(QColor(colour::ink));
    const int total = QFontMetrics(strong).horizontalAdvance(line.total);
    painter.drawText(place, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter, line.total);
    const QRect names = place.adjusted(total + px(18), 0, 0, 0);
    const QRect upper = names.adjusted(0, px(4), 0, -names.height() * 2 / 5);
    painter.drawText(upper, Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter,
                     QFontMetrics(strong).elidedText(line.name, Qt::ElideRight, names.width()));
    painter.setFont(detail);
    painter.setPen(QColor(colour::quiet));
    painter.drawText(names.adjusted(0, names.height() * 3 / 5 - px(2), 0, -px(4)),
                     Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter, line.quantity);
}

}  // namespace ui
