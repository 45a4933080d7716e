#include "ui/line_delegate.h"

#include <QPainter>
#include <QTableView>

#include "sales/kinds.h"
#include "ui/colours.h"
#include "ui/line_model.h"
#include "ui/style.h"

namespace ui {

void LineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const auto* view = qobject_cast<const QTableView*>(option.widget);
    const bool current_row = view != nullptr && view->currentIndex().row() == index.row();
    const QColor open_ground = colour::from_blue_first(sales::colour_editable_cell);
    const QColor ground = current_row                                 ? QColor(colour::current)
                          : index.data(LineModel::open_role).toBool() ? open_ground
                                                                      : ground_;
    painter->save();
    painter->fillRect(option.rect, ground);
    painter->fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                      ground_.darker(108));
    const int column = LineModel::source_column(index.column());
    // Names read from the right like all else, but they alone are cut where they do not fit.
    const QString text = index.data(Qt::DisplayRole).toString();
    const QRect place = option.rect.adjusted(px(8), 0, -px(10), 0);
    painter->setPen(QColor(colour::ink));
    painter->setFont(option.font);
    const bool is_text = column == 2 || column == 3;
    painter->setLayoutDirection(is_text ? Qt::RightToLeft : Qt::LeftToRight);
    painter->drawText(place, Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine,
                      is_text ? option.fontMetrics.elidedText(text, Qt::ElideRight, place.width()) : text);
    if (view != nullptr && view->hasFocus() && view->currentIndex() == index) {
        painter->setPen(QPen(QColor(colour::focus), px(2)));
        painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
    }
    painter->restore();
}

}  // namespace ui
