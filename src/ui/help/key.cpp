#include "ui/help/key.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>

#include "ui/help/places.h"
#include "ui/help/screen.h"
#include "ui/widgets/message_box.h"

namespace ui {

void open_help() {
    QWidget* window = QApplication::activeWindow();
    if (window == nullptr || QApplication::activePopupWidget() != nullptr) return;
    QWidget* front = Sheet::top_of(window);
    if (front == nullptr) front = window;
    if (qobject_cast<MessageBox*>(front) != nullptr || qobject_cast<HelpScreen*>(front) != nullptr) return;

    QWidget* used = QApplication::focusWidget();
    const bool on_front = used != nullptr && (used == front || front->isAncestorOf(used));
    // A field takes the focus back with all of it marked; what is half typed is to go on where it stopped.
    const QPointer<QLineEdit> field = qobject_cast<QLineEdit*>(used);
    const int cursor = field != nullptr ? field->cursorPosition() : 0;
    const int marked_from = field != nullptr ? field->selectionStart() : -1;
    const int marked = field != nullptr ? static_cast<int>(field->selectionLength()) : 0;

    HelpScreen(window, help_place_of(on_front ? used : front)).run();

    if (field == nullptr || !field->hasFocus()) return;
    field->deselect();
    field->setCursorPosition(cursor);
    if (marked_from >= 0) field->setSelection(marked_from, marked);
}

HelpKey::HelpKey(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
}

HelpKey::~HelpKey() {
    qApp->removeEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || watched != QApplication::focusWidget()) return false;
    const auto* pressed = static_cast<QKeyEvent*>(event);
    const auto modifiers =
        pressed->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool wanted = (pressed->key() == Qt::Key_H && modifiers == Qt::ControlModifier) ||
                        (pressed->key() == Qt::Key_Help && modifiers == Qt::NoModifier);
    if (!wanted || pressed->isAutoRepeat()) return false;
    open_help();
    return true;
}

}  // namespace ui
