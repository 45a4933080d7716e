#include "ui/widgets/keypad.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointingDevice>

#include "ui/widgets/key_queue.h"
#include "ui/widgets/pad.h"
#include "ui/widgets/screen_choice.h"
#include "ui/widgets/sheet.h"

namespace ui {

namespace {

// The fields, and the grid, into whose cells figures are typed.
bool is_typed_into(const QWidget* widget) {
    if (widget == nullptr) return false;
    if (const auto* line = qobject_cast<const QLineEdit*>(widget)) return !line->isReadOnly();
    if (const auto* list = qobject_cast<const QComboBox*>(widget)) return list->isEditable();
    return widget->property(keys_property).toString() == keys_no_scans && widget->objectName() == "lines";
}

}  // namespace

Keypad::Keypad(const ScreenChoice& choice)
    : choice_(choice), chosen_(choice.keypad), is_open_(choice.keypad) {
    qApp->installEventFilter(this);
    // Queued, because a screen may move the focus on while it opens.
    connect(qApp, &QApplication::focusChanged, this, &Keypad::follow, Qt::QueuedConnection);
}

Keypad::~Keypad() {
    qApp->removeEventFilter(this);
    delete pad_;
}

bool Keypad::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && watched == QApplication::focusWidget()) {
        const auto* pressed = static_cast<QKeyEvent*>(event);
        if (pressed->key() != Qt::Key_K || pressed->modifiers() != Qt::ControlModifier) return false;
        if (!pressed->isAutoRepeat()) toggle();
        return true;
    }
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        const auto* device = static_cast<QMouseEvent*>(event)->pointingDevice();
        const bool by_finger = device != nullptr && device->type() == QInputDevice::DeviceType::TouchScreen;
        const auto* widget = static_cast<QWidget*>(watched);
        const bool comes_back = comes_back_ && Sheet::top_of(widget->window()) != nullptr;
        if ((by_finger || comes_back) && is_typed_into(widget)) open(true);
    }
    return false;
}

void Keypad::open(bool wanted) {
    is_open_ = wanted;
    comes_back_ = false;
    follow();
}

void Keypad::shut_by_its_key() {
    open(false);
    comes_back_ = true;
}

void Keypad::follow() {
    if (chosen_ != choice_.keypad) is_open_ = chosen_ = choice_.keypad;
    QWidget* field = QApplication::focusWidget();
    if (!is_open_ || !is_typed_into(field)) {
        if (pad_ != nullptr) pad_->hide();
        return;
    }
    if (pad_ != nullptr && pad_->parentWidget() != field->window()) {
        pad_->hide();
        pad_->deleteLater();  // its key may be what moved the focus
        pad_ = nullptr;
    }
    if (pad_ == nullptr) pad_ = new Pad(field->window(), [this] { shut_by_its_key(); });
    if (!pad_->isVisible()) pad_->begin();
    pad_->make_way_for(field);
}

}  // namespace ui
