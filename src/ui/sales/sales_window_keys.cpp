// The sales screen: its keys.
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>

#include "sales/messages.h"
#include "ui/sales/entry_bar.h"
#include "ui/sales/kind_bar.h"
#include "ui/sales/line_view.h"
#include "ui/sales/sales_window.h"
#include "ui/sales/totals_panel.h"
#include "ui/widgets/sheet.h"

namespace ui {

bool SalesWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return QWidget::eventFilter(watched, event);
    auto* widget = static_cast<QWidget*>(watched);
    // Wherever the focus is on this screen, but not on a sheet above it or in an open list or menu.
    if (widget->window() != this || widget != QApplication::focusWidget() || Sheet::top_of(this) != nullptr ||
        QApplication::activePopupWidget() != nullptr) {
        return QWidget::eventFilter(watched, event);
    }
    const auto* key = static_cast<QKeyEvent*>(event);
    return press(key->key(), key->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier));
}

bool SalesWindow::press(int key, Qt::KeyboardModifiers modifiers) {
    if (Sheet::top_of(this) != nullptr) return false;
    if (modifiers == Qt::ControlModifier) {
        if (const ScreenEntry* neighbour = screens_.find(key, false, true)) {
            if (!finish_editing()) return true;
            open_neighbour(*neighbour);
            return true;
        }
        switch (key) {
            case Qt::Key_F:
                if (finish_editing()) search();
                return true;
            case Qt::Key_R:
                kind_bar_->focus_number();
                return true;
            case Qt::Key_I:
                item_info();
                return true;
            case Qt::Key_1:
            case Qt::Key_2:
            case Qt::Key_3:
            case Qt::Key_4:
                logic_.choose_price_level(2 + key - Qt::Key_1);
                repaint_all();
                focus_entry();
                return true;
            default:
                return false;
        }
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12 && !finish_editing()) return true;
    const bool shift = modifiers == Qt::ShiftModifier;
    if (modifiers != Qt::NoModifier && !shift) return false;
    if (const ScreenEntry* neighbour = screens_.find(key, shift)) {
        open_neighbour(*neighbour);
        return true;
    }
    if (shift) {
        if (key != Qt::Key_F1) return false;
        logic_.open_drawer_by_key();
        return true;
    }
    switch (key) {
        case Qt::Key_Escape:
            // A cell or discount that is being typed into is left as it was first.
            if (lines_->is_editing() || (totals_->isAncestorOf(QApplication::focusWidget()) &&
                                         qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr))
                return false;
            if (const auto row = logic_.escape_to_quantity()) {
                lines_->open_cell(static_cast<int>(*row), sales::column::quantity, "1");
            } else {
                entry_bar_->field()->clear();
                focus_entry();
            }
            return true;
        case Qt::Key_F1:
            save();
            return true;
        case Qt::Key_F2:
            logic_.CancelRecord();
            repaint_all();
            focus_entry();
            return true;
        case Qt::Key_F3:
            logic_.CancelInvoice();
            repaint_all();
            focus_entry();
            return true;
        case Qt::Key_F4:
            logic_.toggle_kind();
            repaint_all();
            focus_entry();
            return true;
        case Qt::Key_F5:
            logic_.toggle_payment();
            repaint_all();
            focus_payment_fields();
            return true;
        case Qt::Key_F6:
            switch_payment(2);
            return true;
        case Qt::Key_F7:
            switch_payment(3);
            return true;
        case Qt::Key_F11:
            restart();
            return true;
        case Qt::Key_F12:
            leave();
            return true;
        default:
            return false;
    }
}

void SalesWindow::closeEvent(QCloseEvent* event) {
    if (leaving_) return;
    event->ignore();
    if (Sheet::top_of(this) == nullptr) leave();
}

}  // namespace ui
