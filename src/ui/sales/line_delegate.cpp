#include "ui/sales/line_delegate.h"

#include <QPainter>
#include <QTableView>
#include <algorithm>

#include "sales/invoice.h"
#include "sales/kinds.h"
#include "ui/sales/line_model.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

// How many characters of a text make whole words that fit a width; all of its first word at least.
qsizetype fitting(const QString& text, const QFontMetrics& metrics, int width) {
    qsizetype taken = -1;
    for (qsizetype blank = text.indexOf(' '); blank >= 0; blank = text.indexOf(' ', blank + 1)) {
        if (taken >= 0 && metrics.horizontalAdvance(text.left(blank)) > width) break;
        taken = blank;
    }
    return taken < 0 ? text.size() : taken;
}

constexpr double smallest = 9;  // pixels of the 1366×768 screen
constexpr double before = 4;    // blank beside a figure
constexpr double behind = 10;

QFont fitted(QFont font, const QString& text, int width) {
    while (font.pixelSize() > px(smallest) && QFontMetrics(font).horizontalAdvance(text) > width)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

}  // namespace

QSize LineDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QFont font = option.font;
    font.setPixelSize(px(smallest));
    return {QFontMetrics(font).horizontalAdvance(index.data().toString()) + px(before) + px(behind),
            option.fontMetrics.height()};
}

void LineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const auto* view = qobject_cast<const QTableView*>(option.widget);
    const bool current_row = view != nullptr && view->currentIndex().row() == index.row();
    const QColor open_ground = colour::from_blue_first(sales::colour_editable_cell);
    // Cells that wait for typing show it on the current row too.
    const QColor environment = index.data(LineModel::open_role).toBool() ? open_ground
                               : current_row                             ? QColor(colour::current)
                                                                         : environment_;
    painter->save();
    painter->fillRect(option.rect, environment);
    painter->fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                      environment_.darker(108));
    const int column = LineModel::source_column(index.column());
    const QString text = index.data(Qt::DisplayRole).toString();
    const QRect place = option.rect.adjusted(px(before), 0, -px(behind), 0);
    const int right = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;
    const bool narrow = view != nullptr && view->width() < px(880);
    const double size = narrow ? 15 : 17;
    QFont font = option.font;
    font.setPixelSize(px(column == sales::column::group ? 14 : size));
    painter->setPen(QColor(column == sales::column::group ? colour::slate : colour::ink));
    painter->setFont(font);
    if (column == sales::column::name || column == sales::column::group) {
        painter->setLayoutDirection(Qt::RightToLeft);
        const QFontMetrics one_line(font);
        if (column == sales::column::group || one_line.horizontalAdvance(text) <= place.width()) {
            painter->drawText(place, right | Qt::TextSingleLine,
                              one_line.elidedText(text, Qt::ElideRight, place.width()));
        } else {
            // A long name takes two smaller lines; what is longer still is cut.
            font.setPixelSize(px(narrow ? 13 : 14));
            painter->setFont(font);
            const QFontMetrics small(font);
            const qsizetype first = fitting(text, small, place.width());
            const int middle = place.center().y();
            const auto draw = [&](int top, const QString& part) {
                painter->drawText(QRect(place.left(), top, place.width(), small.height()),
                                  right | Qt::TextSingleLine,
                                  small.elidedText(part, Qt::ElideRight, place.width()));
            };
            const int height = std::min(small.height(), place.height() / 2);
            draw(middle - height, text.left(first).trimmed());
            draw(middle, text.mid(first).trimmed());
        }
    } else {
        // No digit is ever cut off: what is too long is written smaller.
        font = fitted(font, text, place.width());
        painter->setFont(font);
        painter->setLayoutDirection(Qt::LeftToRight);
        painter->drawText(place, right | Qt::TextSingleLine, text);
    }
    if (view != nullptr && view->hasFocus() && view->currentIndex() == index) {
        painter->setPen(QPen(QColor(colour::focus), px(2)));
        painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
    }
    painter->restore();
}

}  // namespace ui
