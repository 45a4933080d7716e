#include "ui/widgets/key_queue.h"

#include <QApplication>
#include <QDateTime>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "ui/widgets/fields.h"

namespace ui {

namespace {

QString key_mode_of(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const QVariant mode = widget->property(keys_property);
        if (mode.isValid()) return mode.toString();
    }
    return {};
}

bool box_is_open() {
    return key_mode_of(QApplication::focusWidget()) == keys_held;
}
bool field_takes_no_scans() {
    return key_mode_of(QApplication::focusWidget()) == keys_no_scans;
}

}  // namespace

bool KeyQueue::Key::printable() const {
    return !text.isEmpty() && text.front().isPrint() &&
           !(modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

// Returns true for a key that makes a screen act without moving the focus first: a function key, a key with
// Alt, a key with Ctrl unless it edits text.
bool KeyQueue::Key::acts() const {
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35) return true;
    if (modifiers & Qt::AltModifier) return true;
    static constexpr Qt::Key editing[] = {Qt::Key_A,     Qt::Key_C,   Qt::Key_V,         Qt::Key_X,
                                          Qt::Key_Z,     Qt::Key_Y,   Qt::Key_Left,      Qt::Key_Right,
                                          Qt::Key_Home,  Qt::Key_End, Qt::Key_Backspace, Qt::Key_Delete,
                                          Qt::Key_Insert};
    return (modifiers & Qt::ControlModifier) &&
           std::find(std::begin(editing), std::end(editing), key) == std::end(editing);
}

KeyQueue::KeyQueue(QObject* parent) : QObject(parent) {
    pending_timer_.setSingleShot(true);
    pending_timer_.setInterval(static_cast<int>(burst_ms) + 5);
    connect(&pending_timer_, &QTimer::timeout, this, &KeyQueue::deliver_pending);
    qApp->installEventFilter(this);
    // Once a box is gone or an amount field is left, the waiting keys go on. Queued, because the action that
    // showed the box is still running.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
        if (key_mode_of(now) == keys_held && key_mode_of(before) != keys_held) ++boxes_shown_;
        QMetaObject::invokeMethod(this, &KeyQueue::deliver_waiting, Qt::QueuedConnection);
    });
}

bool KeyQueue::eventFilter(QObject* watched, QEvent* event) {
    // A key arrives here twice, for the window and for the widget. Take it at the window.
    if (event->type() != QEvent::KeyPress || !watched->isWindowType()) return false;
    if (std::exchange(delivering_, false)) return false;
    window_ = static_cast<QWindow*>(watched);
    const auto* pressed = static_cast<QKeyEvent*>(event);
    // Modifiers pressed on their own are passed on at once.
    if (pressed->key() == Qt::Key_Shift || pressed->key() == Qt::Key_Control ||
        pressed->key() == Qt::Key_Alt) {
        return false;
    }
    const quint64 time = pressed->timestamp() != 0
                             ? pressed->timestamp()
                             : static_cast<quint64>(QDateTime::currentMSecsSinceEpoch());
    // Some scanners end with a line feed.
    const int key = pressed->text() == "\n" ? int(Qt::Key_Return) : pressed->key();
    take({key, pressed->modifiers(), pressed->text(), pressed->isAutoRepeat(), time});
    return true;
}

void KeyQueue::take(const Key& key) {
    const quint64 gap = key.time >= last_ ? key.time - last_ : answer_gap_ms;
    last_ = key.time;
    if (on_hold_) {
        held_.push_back(key);
        return;
    }
    if (box_is_open()) {
        if (answers_box(key, gap))
            deliver(key);
        else
            keep_behind_box(key);
        return;
    }
    if (!held_.empty()) {
        held_.push_back(key);
        deliver_waiting();
        return;
    }
    route(key);
}

// What is typed behind a box and goes on afterwards: characters, and the Enter that ends them.
void KeyQueue::keep_behind_box(const Key& key) {
    if (key.printable() || key.key == Qt::Key_Backspace ||
        (key.is_enter() && !held_.empty() && !held_.back().is_enter()))
        held_.push_back(key);
}

void KeyQueue::hold(bool held) {
    on_hold_ = held;
    if (!held) QMetaObject::invokeMethod(this, &KeyQueue::deliver_waiting, Qt::QueuedConnection);
}

bool KeyQueue::answers_box(const Key& key, quint64 gap) const {
    if (key.printable() || key.key == Qt::Key_Backspace) return false;
    if (key.is_enter() || key.key == Qt::Key_Escape) {
        if (gap < answer_gap_ms) return false;
        return held_.empty() || held_.back().is_enter() || gap >= after_typing_ms;
    }
    return true;  // arrows, Tab and mnemonics move the focus between the buttons
}

void KeyQueue::route(const Key& key) {
    if (!field_takes_no_scans()) {
        deliver(key);
        return;
    }
    const bool close = !pending_.empty() && key.time - pending_.back().time <= burst_ms;
    if (!close) deliver_pending();
    if (key.printable()) {
        pending_.push_back(key);
        pending_timer_.start();
        return;
    }
    if (key.is_enter() && pending_.size() >= shortest_scan) {
        scans_.insert(scans_.end(), pending_.begin(), pending_.end());
        scans_.push_back(key);
        pending_.clear();
        pending_timer_.stop();
        emit scan_waiting();
        deliver_waiting();
        return;
    }
    deliver_pending();
    deliver(key);
}

void KeyQueue::deliver_pending() {
    pending_timer_.stop();
    const std::vector<Key> typed = std::exchange(pending_, {});
    const unsigned boxes = boxes_shown_;
    for (const Key& key : typed) {
        deliver(key);
        if (boxes_shown_ != boxes) return;
    }
}

// Keys that waited for an action were typed for what it was to do. If it ended in a box instead, those that
// act must not act on what was there before.
void KeyQueue::drop_keys_that_act() {
    for (const Key& key : std::exchange(held_, {}))
        keep_behind_box(key);
}

void KeyQueue::deliver_waiting() {
    if (on_hold_) return;
    if (box_is_open()) drop_keys_that_act();
    const auto next = [](std::deque<Key>& keys) {
        Key key = keys.front();
        keys.pop_front();
        return key;
    };
    while (!scans_.empty() && QApplication::focusWidget() != nullptr && !box_is_open() &&
           !field_takes_no_scans()) {
        deliver(next(scans_));
    }
    while (!held_.empty() && QApplication::focusWidget() != nullptr && !box_is_open())
        route(next(held_));
}

void KeyQueue::deliver(const Key& key) {
    QWindow* window = QGuiApplication::focusWindow();
    if (window == nullptr) {
        // Without a window manager nobody else gives the window the focus back.
        if (window_ == nullptr) return;
        window = window_;
        window->requestActivate();
    }
    QKeyEvent press(QEvent::KeyPress, key.key, key.modifiers, key.text, key.repeated);
    press.setTimestamp(key.time);
    const unsigned boxes = boxes_shown_;
    if (key.acts()) {
        take_typed(QApplication::focusWidget());
        if (boxes_shown_ != boxes) return;  // refused: the key must not act on what was there before
    }
    delivering_ = true;  // for this press only: an action that opens a box runs a loop of its own inside
    QCoreApplication::sendEvent(window, &press);
    delivering_ = false;
    if (key.printable() && boxes_shown_ != boxes) drop_rest_of_number();
}

// A cell that may not be edited refuses the first digit with a box. The digits after it and their Enter
// belong to the same amount, and each would be refused with a box of its own, so they are dropped. A scan
// after them is kept.
void KeyQueue::drop_rest_of_number() {
    const auto enter =
        std::find_if(held_.begin(), held_.end(), [](const Key& key) { return key.is_enter(); });
    if (enter == held_.end()) {
        held_.clear();
        return;
    }
    auto burst = enter;
    while (burst != held_.begin() && burst->time - std::prev(burst)->time <= burst_ms)
        --burst;
    const bool is_scan = enter - burst >= static_cast<std::ptrdiff_t>(shortest_scan);
    held_.erase(held_.begin(), is_scan ? burst : enter + 1);
}

}  // namespace ui
