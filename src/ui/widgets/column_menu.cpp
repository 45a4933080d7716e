#include "ui/widgets/column_menu.h"

#include <QMouseEvent>
#include <QStyleOptionMenuItem>
#include <QStylePainter>

namespace ui {

void ColumnMenu::paintEvent(QPaintEvent* event) {
    // QMenu asks for the place of the entry that changed, which is not where it is painted.
    if (event->rect() != rect()) update();
    QStylePainter painter(this);
    QStyleOptionMenuItem panel;
    panel.initFrom(this);
    panel.state = QStyle::State_None;
    painter.drawPrimitive(QStyle::PE_PanelMenu, panel);
    for (QAction* entry : actions()) {
        QStyleOptionMenuItem option;
        initStyleOption(&option, entry);
        option.rect = QStyle::visualRect(layoutDirection(), rect(), actionGeometry(entry));
        painter.drawControl(QStyle::CE_MenuItem, option);
    }
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = style()->pixelMetric(QStyle::PM_MenuPanelWidth, nullptr, this);
    painter.drawPrimitive(QStyle::PE_FrameMenu, frame);
}

QMouseEvent ColumnMenu::mirrored(const QMouseEvent& event) const {
    QPointF at = event.position();
    if (isRightToLeft()) at.setX(width() - 1 - at.x());
    return {event.type(),          at,
            event.scenePosition(), event.globalPosition(),
            event.button(),        event.buttons(),
            event.modifiers(),     event.source()};
}

void ColumnMenu::mousePressEvent(QMouseEvent* event) {
    QMouseEvent there = mirrored(*event);
    QMenu::mousePressEvent(&there);
}

void ColumnMenu::mouseMoveEvent(QMouseEvent* event) {
    QMouseEvent there = mirrored(*event);
    QMenu::mouseMoveEvent(&there);
}

void ColumnMenu::mouseReleaseEvent(QMouseEvent* event) {
    QMouseEvent there = mirrored(*event);
    QMenu::mouseReleaseEvent(&there);
}

}  // namespace ui
