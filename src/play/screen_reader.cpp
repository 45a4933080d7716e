#include "play/screen_reader.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>

#include "ui/widgets/message_box.h"

namespace play {

QWidget* front_window() {
    if (QWidget* active = QApplication::activeWindow(); active != nullptr && active->isVisible())
        return active;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) return window;
    }
    return nullptr;
}

QWidget* find_widget(const QString& name) {
    QWidget* found = nullptr;
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->objectName() != name || !widget->isVisible()) continue;
        const ui::Sheet* top = ui::Sheet::top_of(widget->window());
        if (top != nullptr && (top == widget || top->isAncestorOf(widget))) return widget;
        found = widget;
    }
    return found;
}

QAction* find_action(const QString& name) {
    for (const QWidget* widget : QApplication::allWidgets()) {
        const auto* menu = qobject_cast<const QMenu*>(widget);
        if (menu == nullptr) continue;
        for (QAction* action : menu->actions()) {
            if (action->objectName() == name) return action;
        }
    }
    return nullptr;
}

ui::MessageBox* open_box() {
    for (QWidget* widget : QApplication::allWidgets()) {
        auto* box = qobject_cast<ui::MessageBox*>(widget);
        if (box == nullptr || !box->isVisible()) continue;
        if (box->isWindow() || ui::Sheet::top_of(box->window()) == box) return box;
    }
    return nullptr;
}

QString without_marks(QString text) {
    return text.remove(QChar(0x200E)).remove(QChar(0x200F));
}

QString text_of(const QWidget* widget) {
    QString text;
    if (const auto* label = qobject_cast<const QLabel*>(widget)) text = label->text();
    if (const auto* field = qobject_cast<const QLineEdit*>(widget)) text = field->text();
    if (const auto* list = qobject_cast<const QComboBox*>(widget)) text = list->currentText();
    if (const auto* date = qobject_cast<const QDateTimeEdit*>(widget)) text = date->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        text = button->text().isEmpty() ? button->accessibleName() : button->text().remove('&');
    }
    return without_marks(text).trimmed();
}

Cell cell_of(const QTableView* table, int row, const QString& heading) {
    const QAbstractItemModel* model = table->model();
    for (int column = 0; column < model->columnCount(); ++column) {
        if (model->headerData(column, Qt::Horizontal).toString().replace('\n', ' ') != heading) continue;
        if (row < 1 || row > model->rowCount()) return {};
        return {true, without_marks(model->index(row - 1, column).data().toString()).trimmed()};
    }
    return {};
}

namespace {

QString kind_of(const QWidget* widget) {
    if (qobject_cast<const QTableView*>(widget) != nullptr) return "table";
    if (qobject_cast<const QAbstractButton*>(widget) != nullptr) {
        return qobject_cast<const QAbstractButton*>(widget)->isCheckable() ? "option" : "button";
    }
    if (qobject_cast<const QComboBox*>(widget) != nullptr) return "list";
    if (qobject_cast<const QLineEdit*>(widget) != nullptr) return "field";
    if (qobject_cast<const QLabel*>(widget) != nullptr) return "text";
    return qobject_cast<const ui::Sheet*>(widget) != nullptr || widget->isWindow() ? "screen" : "group";
}

QString screen_of(const QWidget* widget) {
    for (const QWidget* on = widget; on != nullptr; on = on->parentWidget()) {
        if (on->isWindow() || qobject_cast<const ui::Sheet*>(on) != nullptr) return on->objectName();
    }
    return {};
}

}  // namespace

std::vector<Named> all_named() {
    std::vector<Named> found;
    for (const QWidget* widget : QApplication::allWidgets()) {
        const QString name = widget->objectName();
        if (name.isEmpty() || name.startsWith("qt_") || !widget->isVisible()) continue;
        const bool button = qobject_cast<const QAbstractButton*>(widget) != nullptr;
        QString caption = widget->accessibleName();
        if (caption.isEmpty() && button) caption = text_of(widget);
        found.push_back({screen_of(widget), name, kind_of(widget), caption});
    }
    for (const QWidget* widget : QApplication::allWidgets()) {
        if (const auto* menu = qobject_cast<const QMenu*>(widget)) {
            for (const QAction* action : menu->actions()) {
                if (action->objectName().isEmpty()) continue;
                found.push_back({menu->objectName(), action->objectName(), "menu entry",
                                 action->text().remove('&').section('\t', 0, 0)});
            }
        }
    }
    return found;
}

}  // namespace play
