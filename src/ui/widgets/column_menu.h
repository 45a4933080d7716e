// A menu whose columns run from right to left. QMenu breaks one that is too long for the screen into columns
// from left to right in any language; here each entry is painted, and met by the mouse, in the mirrored
// place.
#pragma once

#include <QMenu>

namespace ui {

class ColumnMenu : public QMenu {
    Q_OBJECT
  public:
    explicit ColumnMenu(QWidget* parent) : QMenu(parent) {}

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QMouseEvent mirrored(const QMouseEvent& event) const;
};

}  // namespace ui
