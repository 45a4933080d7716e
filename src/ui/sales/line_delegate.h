// How a cell of the line grid is painted.
#pragma once

#include <QColor>
#include <QStyledItemDelegate>

namespace ui {

class LineDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    // What a figure needs at its smallest.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    void set_ground(const QColor& environment) { environment_ = environment; }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  private:
    QColor environment_;
};

}  // namespace ui
