#include "ui/widgets/key_queue.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDateTime>
#include <QMenu>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "common/keyboard_layout.h"
#include "common/numbers.h"
#include "common/text.h"
#include "ui/widgets/fields.h"

QT_BEGIN_NAMESPACE
// Offers a key to the shortcuts; declared in the headers of Qt's test library alone.
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject* object, ulong timestamp, int key,
                                               Qt::KeyboardModifiers modifiers, const QString& text = {},
                                               bool repeated = false, ushort count = 1);
QT_END_NAMESPACE

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

// A button takes no characters. If the press were held back, it would arrive after its own release and do
// nothing.
bool presses_button(int key) {
    return key == Qt::Key_Space && qobject_cast<QAbstractButton*>(QApplication::focusWidget()) != nullptr;
}

// The key at the same place of a Latin layout.
int on_latin_keyboard(int key) {
    if (key > 0xFFFF) return key;  // a key without a character
    const auto typed = static_cast<char32_t>(key);
    if (const auto latin = common::latin_key(typed)) return QChar(*latin).toUpper().unicode();
    if (key < 0x80) return key;
    const std::string digit = common::western_digits(common::utf8(typed));
    return digit.size() == 1 ? digit.front() : key;
}

// The letter that the key types on the other layout; 0 if there is none.
int on_other_layout(int key) {
    const int latin = on_latin_keyboard(key);
    if (latin != key) return latin;
    if (key >= 0x80) return 0;
    const auto arabic = common::arabic_key(QChar(static_cast<char16_t>(key)).toLower().unicode());
    return arabic ? static_cast<int>(*arabic) : 0;
}

}  // namespace

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

// Returns true for the keys that move the focus between the buttons of a box.
bool KeyQueue::Key::leads_to_button() const {
    return key == Qt::Key_Tab || key == Qt::Key_Backtab || (key >= Qt::Key_Left && key <= Qt::Key_Down);
}

KeyQueue::KeyQueue(QObject* parent) : QObject(parent) {
    pending_timer_.setSingleShot(true);
    pending_timer_.setInterval(static_cast<int>(burst_ms) + 5);
    connect(&pending_timer_, &QTimer::timeout, this, &KeyQueue::end_pending);
    qApp->installEventFilter(this);
    // Once a box is gone or an amount field is left, the waiting keys go on. Queued, because the action that
    // showed the box is still running.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
        if (key_mode_of(now) == keys_held && key_mode_of(before) != keys_held) {
            ++boxes_shown_;
            // A digit that a cell refuses with a box begins a number; the Enter after it is not an answer.
            typed_at_box_ = typing_;
        }
        QMetaObject::invokeMethod(this, &KeyQueue::deliver_waiting, Qt::QueuedConnection);
    });
}

bool KeyQueue::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWindowType()) return false;
    // The platform offers a key to the mnemonics before it sends it. Here deliver() does that when the key's
    // turn comes.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    // A key arrives here twice, for the window and for the widget. Take it at the window.
    if (event->type() != QEvent::KeyPress) return false;
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
    int key = pressed->key();
    QString text = pressed->text();
    // A key with Ctrl or Alt types nothing, and the key of the ligature "لا" two letters.
    if (pressed->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) text.clear();
    if (key >= 0xFEF5 && key <= 0xFEFC) text = text.normalized(QString::NormalizationForm_KC);
    if (pressed->text() == "\n") key = Qt::Key_Return;  // some scanners end with a line feed
    if (pressed->modifiers() & Qt::ControlModifier) key = on_latin_keyboard(key);
    take({key, pressed->modifiers(), text, pressed->isAutoRepeat(), time});
    return true;
}

void KeyQueue::take(Key key) {
    const quint64 gap = key.time >= last_ ? key.time - last_ : answer_gap_ms;
    last_ = key.time;
    if (gap > burst_ms) burst_ = 0;
    if (key.printable()) ++burst_;
    key.burst = key.is_enter() ? std::exchange(burst_, 0) : burst_;
    const bool led_to_button = std::exchange(led_to_button_, key.leads_to_button());
    if (on_hold_) {
        held_.push_back(key);
        return;
    }
    if (behind_box_ && !is_close(key)) end_pending();
    if (box_is_open() || behind_box_) {
        take_at_box(key, gap, led_to_button);
        return;
    }
    if (!held_.empty()) {
        held_.push_back(key);
        deliver_waiting();
        return;
    }
    route(key);
}

void KeyQueue::take_at_box(const Key& key, quint64 gap, bool led_to_button) {
    if (collect_behind_box(key)) {
        if (!box_is_open()) deliver_waiting();
    } else if (box_is_open() && answers_box(key, gap, led_to_button)) {
        deliver(key);
    }
}

// Collects the characters of a scan; its Enter completes it. Returns false for any other key. What turns out
// to be typed by hand is dropped.
bool KeyQueue::collect_behind_box(const Key& key) {
    if (!is_close(key)) end_pending();
    if (key.printable()) {
        behind_box_ = true;
        pending_.push_back(key);
        pending_timer_.start();
        return true;
    }
    if (!key.is_enter() || pending_.size() < shortest_scan) {
        end_pending();
        return false;
    }
    pending_timer_.stop();
    held_.insert(held_.end(), pending_.begin(), pending_.end());
    held_.push_back(key);
    pending_.clear();
    behind_box_ = false;
    emit scan_waiting();
    return true;
}

bool KeyQueue::is_close(const Key& key) const {
    return !pending_.empty() && key.time - pending_.back().time <= burst_ms;
}

// The pending keys were typed by hand.
void KeyQueue::end_pending() {
    if (!behind_box_) {
        deliver_pending();
        return;
    }
    pending_timer_.stop();
    pending_.clear();
    behind_box_ = false;
    typed_at_box_ = true;
    QApplication::beep();
}

std::size_t KeyQueue::waiting_scans() const {
    const auto ends = [](const Key& key) { return key.is_enter(); };
    return static_cast<std::size_t>(std::count_if(scans_.begin(), scans_.end(), ends) +
                                    std::count_if(held_.begin(), held_.end(), ends));
}

void KeyQueue::drop_waiting_scans() {
    scans_.clear();
    held_.clear();
}

// The beginning of the scan that ends with the last waiting key.
std::deque<KeyQueue::Key>::const_iterator KeyQueue::last_scan() const {
    if (held_.empty() || !held_.back().is_enter()) return held_.end();
    const auto before =
        std::find_if(held_.rbegin() + 1, held_.rend(), [](const Key& key) { return !key.printable(); });
    return before.base();
}

QString KeyQueue::scan_behind_box() const {
    QString text;
    for (auto key = last_scan(); key != held_.end(); ++key)
        text += key->printable() ? key->text : QString();
    return text;
}

void KeyQueue::drop_scan_behind_box() {
    held_.erase(last_scan(), held_.end());
}

void KeyQueue::hold(bool held) {
    on_hold_ = held;
    if (!held) QMetaObject::invokeMethod(this, &KeyQueue::deliver_waiting, Qt::QueuedConnection);
}

bool KeyQueue::answers_box(const Key& key, quint64 gap, bool led_to_button) {
    if (key.key == Qt::Key_Backspace) return false;
    if (!key.is_enter() && key.key != Qt::Key_Escape)
        return true;  // arrows, Tab and mnemonics move the focus between the buttons
    if (std::exchange(typed_at_box_, false) && gap < after_typing_ms) return false;
    return gap >= answer_gap_ms || led_to_button;
}

void KeyQueue::route(const Key& key) {
    if (!field_takes_no_scans()) {
        deliver(key);
        return;
    }
    if (!is_close(key)) deliver_pending();
    if (pending_.empty() && presses_button(key.key)) {
        deliver(key);
        return;
    }
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

// Keys that waited for an action were typed for its outcome. It ended in a box instead, so only the scans
// among them keep waiting.
void KeyQueue::keep_scans_alone() {
    std::deque<Key> keys = std::exchange(held_, {});
    keys.insert(keys.end(), pending_.begin(), pending_.end());
    pending_.clear();
    for (const Key& key : keys)
        collect_behind_box(key);
}

void KeyQueue::deliver_waiting() {
    if (on_hold_) return;
    if (box_is_open()) keep_scans_alone();
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
    const unsigned boxes = boxes_shown_;
    if (key.acts()) {
        take_typed(QApplication::focusWidget());
        if (boxes_shown_ != boxes) return;  // refused: the key must not act on what was there before
    }
    typing_ = key.printable() && !presses_button(key.key);
    if (is_mnemonic(key)) return;
    QString text = key.text;
    // The menu goes by the character that the key types, and its letters are Arabic.
    if (qobject_cast<QMenu*>(QApplication::activePopupWidget()) != nullptr && key.key < 0x80 && typing_) {
        if (const int letter = on_other_layout(key.key)) text = QChar(static_cast<char16_t>(letter));
    }
    QKeyEvent press(QEvent::KeyPress, key.key, key.modifiers, text, key.repeated);
    press.setTimestamp(key.time);
    delivered_ = {key.is_enter(), key.burst};
    delivering_ = true;  // for this press only: an action that opens a box runs a loop of its own inside
    QCoreApplication::sendEvent(window, &press);
    delivering_ = false;
}

// A caption's underlined letter stands for the key at its place, whichever letter the layout in use types
// there. Returns true if the key was one.
bool KeyQueue::is_mnemonic(const Key& key) {
    QWidget* focus = QApplication::focusWidget();
    if (!(key.modifiers & Qt::AltModifier) || focus == nullptr) return false;
    const auto is_shortcut = [&](int letter) {
        return letter != 0 && qt_sendShortcutOverrideEvent(focus, key.time, letter, key.modifiers);
    };
    return is_shortcut(key.key) || is_shortcut(on_other_layout(key.key));
}

}  // namespace ui
