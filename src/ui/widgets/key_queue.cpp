#include "ui/widgets/key_queue.h"

#include <QApplication>
#include <QDateTime>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace ui {

namespace {

QString taking_of(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const QVariant taking = widget->property(keys_property);
        if (taking.isValid()) return taking.toString();
    }
    return {};
}

bool box_is_open() {
    return taking_of(QApplication::focusWidget()) == keys_held;
}
bool field_takes_no_scans() {
    return taking_of(QApplication::focusWidget()) == keys_no_scans;
}

}  // namespace

bool KeyQueue::Key::printable() const {
    return !text.isEmpty() && text.front().isPrint() &&
           !(modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

KeyQueue::KeyQueue(QObject* parent) : QObject(parent) {
    doubt_.setSingleShot(true);
    doubt_.setInterval(static_cast<int>(burst_ms) + 5);
    connect(&doubt_, &QTimer::timeout, this, &KeyQueue::settle_doubt);
    qApp->installEventFilter(this);
    // Once a box is gone or an amount field is left, what waited goes on. Later, because the action that
    // showed the box is still running.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
        if (taking_of(now) == keys_held && taking_of(before) != keys_held) ++boxes_;
        QMetaObject::invokeMethod(this, &KeyQueue::feed, Qt::QueuedConnection);
    });
}

bool KeyQueue::eventFilter(QObject* watched, QEvent* event) {
    // A key passes here twice, at the window and at the widget; it is caught at the window.
    if (event->type() != QEvent::KeyPress || !watched->isWindowType()) return false;
    if (std::exchange(delivering_, false)) return false;
    const auto* pressed = static_cast<QKeyEvent*>(event);
    // The input method's and the modifiers' own presses are no keys yet.
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
    const quint64 gap = key.time >= last_ ? key.time - last_ : alone_ms;
    last_ = key.time;
    if (box_is_open()) {
        if (answers_box(key, gap)) {
            deliver(key);
        } else if (key.printable() || key.key == Qt::Key_Backspace ||
                   (key.is_enter() && !held_.empty() && !held_.back().is_enter())) {
            held_.push_back(key);
        }
        return;
    }
    if (!held_.empty()) {
        held_.push_back(key);
        feed();
        return;
    }
    route(key);
}

bool KeyQueue::answers_box(const Key& key, quint64 gap) const {
    if (key.printable() || key.key == Qt::Key_Backspace) return false;
    if (key.is_enter() || key.key == Qt::Key_Escape) {
        if (gap < alone_ms) return false;
        return held_.empty() || held_.back().is_enter() || gap >= blind_ms;
    }
    return true;  // arrows, Tab and mnemonics move the focus between the buttons
}

void KeyQueue::route(const Key& key) {
    if (!field_takes_no_scans()) {
        deliver(key);
        return;
    }
    const bool close = !doubtful_.empty() && key.time - doubtful_.back().time <= burst_ms;
    if (!close) settle_doubt();
    if (key.printable()) {
        doubtful_.push_back(key);
        doubt_.start();
        return;
    }
    if (key.is_enter() && doubtful_.size() >= shortest_scan) {
        scans_.insert(scans_.end(), doubtful_.begin(), doubtful_.end());
        scans_.push_back(key);
        doubtful_.clear();
        doubt_.stop();
        emit scan_waits();
        feed();
        return;
    }
    settle_doubt();
    deliver(key);
}

void KeyQueue::settle_doubt() {
    doubt_.stop();
    const std::vector<Key> typed = std::exchange(doubtful_, {});
    const unsigned boxes = boxes_;
    for (const Key& key : typed) {
        deliver(key);
        if (boxes_ != boxes) return;
    }
}

void KeyQueue::feed() {
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
    if (window == nullptr) return;
    QKeyEvent press(QEvent::KeyPress, key.key, key.modifiers, key.text, key.repeated);
    press.setTimestamp(key.time);
    const unsigned boxes = boxes_;
    delivering_ = true;  // this one press; an action that opens a box runs its own loop below it
    QCoreApplication::sendEvent(window, &press);
    delivering_ = false;
    if (key.printable() && boxes_ != boxes) drop_rest_of_word();
}

// A cell that may not be edited refuses the first digit with a box. The digits behind it and their Enter
// belong to the same amount: each would only be refused again, with a box of its own. A scan behind them does
// not.
void KeyQueue::drop_rest_of_word() {
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
